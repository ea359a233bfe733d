#include "platform/linux/internet/ftp_session.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <string_view>

#include "platform/linux/internet/ftp_data_connection.h"

namespace karvel {
namespace {

constexpr FtpTimeLimits::Milliseconds kQuitLimit{1000};
constexpr std::size_t kLongestListing = 128 * 1024 * 1024;  ///< bytes
constexpr int kNotLoggedIn = 530;

Internet::ErrorNumber numberOfBrokenConnection() {
  return errno == ECONNRESET ? Internet::kErrorConnectionReset : Internet::kErrorConnectionAborted;
}

}  // namespace

/// A command that moves data: its replies and its data connection, watched side by side, as either
/// may come first, and a refusal may come at any time.
class FtpSession::Transfer {
 public:
  Transfer(FtpControl& control, short direction) : control_(control), direction_(direction) {}
  virtual ~Transfer() = default;

  [[nodiscard]] ErrorNumber run(const std::string& command, bool passive) {
    if (const ErrorNumber error = data_.open(control_, passive)) return error;
    if (const ErrorNumber error = control_.send(command)) return error;
    beginStep();
    while (!(moved_ && answered_)) {
      const ErrorNumber error = awaitEvent();
      if (error != 0) return error;
    }
    return failure_;
  }

 protected:
  /// Moves what the connection takes or has. True at the end of the data.
  [[nodiscard]] virtual bool move(const FtpSocket& data) = 0;

  /// The data ends here for that reason, which counts unless the server gives one.
  bool fail(ErrorNumber error) {
    failure_ = error;
    return true;
  }

 private:
  [[nodiscard]] ErrorNumber awaitEvent() {
    std::array<pollfd, 3> sockets{};
    const bool moving = !moved_ && (begun_ || direction_ == POLLIN);
    sockets[0] = answered_ ? pollfd{-1, 0, 0} : control_.socket().awaiting(POLLIN);
    sockets[1] = data_.listener().awaiting(POLLIN);
    sockets[2] = moving ? data_.socket().awaiting(direction_) : pollfd{-1, 0, 0};
    const bool hasReply = !answered_ && control_.hasInput();
    if (!hasReply && !waitFor(sockets, control_.watch)) {
      return control_.end(Internet::kErrorTimeout);
    }
    if (sockets[1].revents != 0 && data_.accept(control_)) beginStep();
    if (sockets[2].revents != 0) moveData();
    return hasReply || sockets[0].revents != 0 ? takeReply() : 0;
  }

  [[nodiscard]] ErrorNumber takeReply() {
    if (const ErrorNumber error = control_.receiveReply(control_.limits().answer)) return error;
    beginStep();
    const FtpReply& reply = control_.reply();
    begun_ = true;
    if (reply.preliminary()) return 0;
    answered_ = true;
    if (!data_.socket().valid() && data_.listener().valid()) data_.accept(control_);
    // Without a data connection there was nothing to list.
    if (!data_.socket().valid() && direction_ == POLLIN) moved_ = true;
    const bool early = direction_ == POLLOUT && !moved_;
    return reply.positive() && !early ? 0 : Internet::kErrorExtended;
  }

  void moveData() {
    beginStep();
    if (!move(data_.socket())) return;
    moved_ = true;
    data_.close();
  }

  void beginStep() {
    const FtpTimeLimits& limits = control_.limits();
    const bool transferring = begun_ && (moved_ || data_.socket().valid());
    control_.watch.beginStep(transferring ? limits.silence() : limits.answer);
  }

  FtpControl& control_;
  const short direction_;  ///< POLLIN or POLLOUT
  FtpDataConnection data_;
  bool begun_ = false;     ///< the server has answered the command
  bool moved_ = false;     ///< all data, or as much as could be
  bool answered_ = false;  ///< for the last time
  ErrorNumber failure_ = 0;
};

class FtpSession::Upload : public Transfer {
 public:
  Upload(FtpControl& control, UploadReader& reader) : Transfer(control, POLLOUT), reader_(reader) {}

 private:
  bool move(const FtpSocket& data) override {
    if (piece_.empty()) {
      const auto piece = reader_.next();
      if (!piece) return fail(Internet::kErrorFileNotFound);
      if (piece->empty()) return true;
      piece_ = *piece;
    }
    const auto sent = data.send(piece_);
    if (!sent) return fail(numberOfBrokenConnection());
    piece_.remove_prefix(*sent);
    return false;
  }

  UploadReader& reader_;
  std::string_view piece_;
};

class FtpSession::Download : public Transfer {
 public:
  Download(FtpControl& control, FtpListing& listing)
      : Transfer(control, POLLIN), listing_(listing) {}

 private:
  bool move(const FtpSocket& data) override {
    std::array<char, 16 * 1024> bytes;
    const auto count = data.receive(bytes);
    if (!count) return errno == 0 || fail(numberOfBrokenConnection());
    listing_.append({bytes.data(), *count});
    size_ += *count;
    return size_ > kLongestListing && fail(Internet::kErrorInternal);
  }

  FtpListing& listing_;
  std::size_t size_ = 0;
};

FtpSession::~FtpSession() {
  control_.watch.beginExchange(std::min(kQuitLimit, control_.limits().answer));
  const bool said = control_.ended() == 0 && control_.send("QUIT") == 0;
  if (said) static_cast<void>(control_.receiveLastReply());
}

FtpSession::ErrorNumber FtpSession::logIn(const std::string& host, std::uint16_t port,
                                          const AddressLookup& lookup, const std::string& user,
                                          const std::string& password) {
  const FtpTimeLimits& limits = control_.limits();
  control_.watch.beginExchange(limits.connect);
  const SocketAddresses addresses = lookUpWithin(limits.connect, lookup, host, port);
  if (const ErrorNumber error = control_.connect(addresses)) return error;

  control_.watch.beginExchange(limits.exchange());
  if (const ErrorNumber error = control_.receiveLastReply()) return error;
  if (!reply().positive()) return control_.end(Internet::kErrorExtended);
  ErrorNumber error = control_.command("USER " + user);
  if (error == 0 && reply().intermediate()) error = control_.command("PASS " + password);
  if (error == 0 && reply().positive()) return 0;
  const bool refused = reply().complete() && reply().code() == kNotLoggedIn;
  if (error == 0) error = Internet::kErrorExtended;
  return control_.end(refused ? Internet::kErrorLoginFailure : error);
}

FtpSession::ErrorNumber FtpSession::command(const std::string& line) {
  control_.watch.beginExchange(control_.limits().exchange());
  return control_.command(line);
}

FtpSession::ErrorNumber FtpSession::rename(const std::string& from, const std::string& to) {
  control_.watch.beginExchange(control_.limits().exchange());
  const ErrorNumber error = control_.command("RNFR " + from);
  return error != 0 ? error : control_.command("RNTO " + to);
}

FtpSession::ErrorNumber FtpSession::upload(const std::string& remoteName, UploadReader& reader,
                                           TransferType type) {
  control_.watch.beginExchange(control_.limits().upload(reader.size()));
  Upload upload(control_, reader);
  return transfer("STOR " + remoteName, type, upload);
}

FtpSession::ErrorNumber FtpSession::list(const std::string& argument, FtpListing& listing) {
  control_.watch.beginExchange(control_.limits().exchange());
  Download download(control_, listing);
  return transfer(argument.empty() ? "LIST" : "LIST " + argument, TransferType::kText, download);
}

FtpSession::ErrorNumber FtpSession::transfer(const std::string& command, TransferType type,
                                             Transfer& transfer) {
  if (type_ != type) {
    type_ = TransferType::kNone;
    const std::string line = std::string("TYPE ") + static_cast<char>(type);
    if (const ErrorNumber error = control_.command(line)) return error;
    type_ = type;
  }
  return transfer.run(command, passive_);
}

}  // namespace karvel
