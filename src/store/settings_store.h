#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/profile.h"

namespace karvel {

/// Names of sections as the settings files spell them.
namespace section {
inline constexpr std::string_view kFtp = "FTP INFOMATION";
inline constexpr std::string_view kUser = "USER INFOMATION";
inline constexpr std::string_view kShop = "KARVEL1 INFOMATION";
inline constexpr std::string_view kDesks = "TASHIN INFOMATION";
inline constexpr std::string_view kMail = "MAIL INFOMATION";
}  // namespace section

/// The settings store: the only access to the two profile files, the program's own and the ticket
/// application's. Names and values are UTF-8. Nothing here fails or shows a message.
class IniRedWrt {
 public:
  IniRedWrt(Profile& profile, Files& files, Clock& clock)
      : profile_(profile), files_(files), clock_(clock) {}

  std::string OwnIniPath;     ///< the program's own settings file
  std::string TicketIniPath;  ///< the ticket application's settings file

  /// The value, at most 255 bytes of code page 932; "" when file, section or key is missing or the
  /// value is empty. An empty answer is asked for once more after 100 ms.
  [[nodiscard]] std::string ReadIni(std::string_view section, std::string_view key,
                                    const std::string& file);

  /// Stores a value as one line; characters that would break the line are left out. A refused
  /// write is tried once more, 100 ms after the file has been made a normal one. False when that
  /// fails too.
  bool WriteIni(std::string_view section, std::string_view key, std::string_view value,
                const std::string& file);

  /// Settles TicketIniPath from the own key "HST FOLD"; an empty one becomes the program's folder
  /// and is stored so.
  void locateTicketIni(const std::string& programFolder);

  /// ReadIni and WriteIni on the section kFtp of the own file.
  [[nodiscard]] std::string readOwn(std::string_view key);
  bool writeOwn(std::string_view key, std::string_view value);
  /// ReadIni on the ticket application's file.
  [[nodiscard]] std::string readTicket(std::string_view section, std::string_view key);

 private:
  void SetFileAttr(const std::string& path, std::uint16_t attributes);

  Profile& profile_;
  Files& files_;
  Clock& clock_;
};

}  // namespace karvel
