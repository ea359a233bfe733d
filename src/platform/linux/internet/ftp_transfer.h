#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/linux/internet/ftp_control.h"

namespace karvel {

/// Moves what a data connection takes or has. A result ends the data: 0 when that was all,
/// otherwise the port's number of the reason.
using MoveData = std::function<std::optional<Internet::ErrorNumber>(const FtpSocket& data)>;

/// Runs a command that moves data, with a data connection of its own: POLLOUT for an upload, POLLIN
/// for a download. 0 or the port's number; a reason of the server comes before one of `move`.
///
/// The connection is made with the host of the control connection and no other. In passive mode the
/// host that the server names is ignored: behind a router it is often wrong, and a hostile server
/// could send the program to other machines with it. In active mode whoever else connects is turned
/// away. Silence ends the session, as every later transfer would wait as long; a refusal does not.
[[nodiscard]] Internet::ErrorNumber transferData(FtpControl& control, bool passive,
                                                 const std::string& command, short direction,
                                                 const MoveData& move);

}  // namespace karvel
