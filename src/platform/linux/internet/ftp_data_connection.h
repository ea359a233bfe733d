#pragma once

#include "platform/linux/internet/ftp_control.h"

namespace karvel {

/// The data connection of one transfer.
///
/// It is made with the host of the control connection and no other. In passive mode the host that
/// the server names is ignored: behind a router it is often wrong, and a hostile server could send
/// the program to other machines with it. In active mode whoever else connects is turned away.
class FtpDataConnection {
 public:
  using ErrorNumber = Internet::ErrorNumber;

  /// Passive: asks the server for a port and connects to it. Silence there ends the session, as
  /// every later transfer would wait as long; a refusal does not.
  /// Active: listens, and tells the server where.
  [[nodiscard]] ErrorNumber open(FtpControl& control, bool passive);

  /// Active, before the server has connected: the socket that waits for it.
  [[nodiscard]] const FtpSocket& listener() const { return listener_; }
  /// Takes the server's connection; true when it has come.
  bool accept(const FtpControl& control);

  /// The connection itself; invalid before it has come and after close().
  [[nodiscard]] const FtpSocket& socket() const { return socket_; }
  void close() { socket_.close(); }

 private:
  [[nodiscard]] ErrorNumber openPassive(FtpControl& control);
  [[nodiscard]] ErrorNumber openActive(FtpControl& control);

  FtpSocket socket_;
  FtpSocket listener_;
};

}  // namespace karvel
