#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <utility>

namespace karvel {

/// What a scripted FTP server does wrong with one command. Made by its named functions.
struct FtpFault {
  enum class Kind {
    kNone,
    kRefuse,
    kReplaceReply,
    kDelay,
    kDropBefore,
    kDropAfter,
    kReset,
    kStall,
    kSplitReply,
    kEndlessReply,
    kCutTransfer,
    kDropTransfer,
    kStallTransfer,
    kEndlessTransfer,
    kLateConnection,
    kRefusedPort,
    kSilentPort,
    kForeignAddress,
    kStranger,
  };

  Kind kind = Kind::kNone;
  std::string text;
  std::chrono::milliseconds time{0};
  std::size_t bytes = 0;

  /// The command is not carried out; this is the answer.
  static FtpFault refuse(std::string reply) { return {Kind::kRefuse, std::move(reply), {}, 0}; }
  /// The command is carried out, but its last reply is these bytes (a line end is added).
  static FtpFault replaceReply(std::string bytes) {
    return {Kind::kReplaceReply, std::move(bytes), {}, 0};
  }
  /// The command is carried out that much later.
  static FtpFault delay(std::chrono::milliseconds time) { return {Kind::kDelay, {}, time, 0}; }
  /// The control connection ends instead of the command.
  static FtpFault dropBefore() { return {Kind::kDropBefore, {}, {}, 0}; }
  /// The command is carried out and answered, then the control connection ends.
  static FtpFault dropAfter() { return {Kind::kDropAfter, {}, {}, 0}; }
  /// Like dropBefore(), with a reset.
  static FtpFault reset() { return {Kind::kReset, {}, {}, 0}; }
  /// No answer ever; the connection stays.
  static FtpFault stall() { return {Kind::kStall, {}, {}, 0}; }
  /// The replies arrive byte by byte.
  static FtpFault splitReply() { return {Kind::kSplitReply, {}, {}, 0}; }
  /// The same bytes again and again, with a pause between them, as long as the client is there.
  static FtpFault endlessReply(std::string bytes, std::chrono::milliseconds pause) {
    return {Kind::kEndlessReply, std::move(bytes), pause, 0};
  }
  /// The data connection ends after so many bytes; the server then says so.
  static FtpFault cutTransfer(std::size_t bytes) {
    return {Kind::kCutTransfer, "426 Data connection closed.", {}, bytes};
  }
  /// Both connections end after so many bytes of data.
  static FtpFault dropTransfer(std::size_t bytes) { return {Kind::kDropTransfer, {}, {}, bytes}; }
  /// The server does nothing more after so many bytes of data.
  static FtpFault stallTransfer(std::size_t bytes) { return {Kind::kStallTransfer, {}, {}, bytes}; }
  /// The same bytes of data again and again, with a pause between them.
  static FtpFault endlessTransfer(std::string bytes, std::chrono::milliseconds pause) {
    return {Kind::kEndlessTransfer, std::move(bytes), pause, 0};
  }
  /// A passive port that refuses connections, or does not answer at all.
  static FtpFault refusedPort() { return {Kind::kRefusedPort, {}, {}, 0}; }
  static FtpFault silentPort() { return {Kind::kSilentPort, {}, {}, 0}; }
  /// A passive port is told with the address of another machine.
  static FtpFault foreignAddress() { return {Kind::kForeignAddress, {}, {}, 0}; }
  /// Another machine connects to an active port before the server does.
  static FtpFault stranger() { return {Kind::kStranger, {}, {}, 0}; }
  /// An active transfer is announced that much earlier than its connection is opened.
  static FtpFault lateConnection(std::chrono::milliseconds time) {
    return {Kind::kLateConnection, {}, time, 0};
  }
};

}  // namespace karvel
