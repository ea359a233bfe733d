#include "ftp/session_holder.h"

#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::size_t kErrorTextWidth = 128;

}  // namespace

void SessionHolder::create() {
  clsFtp = std::make_unique<McWinFTP>(internet_,
                                      [this](std::int32_t ErrNumber, const std::string& ErrString) {
                                        clsFtp_FTPFrr(ErrNumber, ErrString);
                                      });
}

void SessionHolder::clsFtp_FTPFrr(std::int32_t ErrNumber, const std::string& ErrString) {
  form_.LastFtpError = fixedWidth(std::to_string(ErrNumber) + "/" + ErrString, kErrorTextWidth);
}

}  // namespace karvel
