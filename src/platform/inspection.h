#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "text/date_time.h"

namespace karvel {

/// What a look at a shop asks of the system beyond the ports that the program itself works with.
/// Nothing here changes anything in the shop. Empty answers mean that the system does not tell.
class Inspection {
 public:
  struct Entry {
    std::string name;  ///< without path
    bool folder = false;
    DateTime modified;  ///< local time
  };

  virtual ~Inspection() = default;

  /// What lies directly in a folder, by name.
  [[nodiscard]] virtual std::vector<Entry> entries(const std::string& folder) = 0;
  /// The room that this user has on the folder's disk, in bytes.
  [[nodiscard]] virtual std::optional<std::uint64_t> freeBytes(const std::string& folder) = 0;
  /// True when this user may make files in the folder, by its rights alone.
  [[nodiscard]] virtual bool writable(const std::string& folder) = 0;
  /// True when other ordinary users may read the file.
  [[nodiscard]] virtual std::optional<bool> readableByOthers(const std::string& file) = 0;

  /// True while the program of that folder runs for this user.
  [[nodiscard]] virtual bool running(const std::string& programFolder) = 0;
  /// The text of a message box in which that program waits for an answer; "" when there is none.
  [[nodiscard]] virtual std::string waitingMessage(const std::string& programFolder) = 0;
  /// True when that program is started as this user signs in.
  [[nodiscard]] virtual std::optional<bool> startsAtSignIn(const std::string& programFolder) = 0;

  /// All addresses of a host, in digits; at most 10 seconds.
  [[nodiscard]] virtual std::vector<std::string> addresses(const std::string& host) = 0;
  /// The system's code page for programs without Unicode.
  [[nodiscard]] virtual std::optional<unsigned> codePage() = 0;
  /// Name and version of the operating system.
  [[nodiscard]] virtual std::string systemName() = 0;
  /// A time that only goes on, from any beginning.
  [[nodiscard]] virtual std::chrono::milliseconds elapsed() = 0;

  // Folders of this user, without a separator at the end: for temporary files, for documents.
  [[nodiscard]] virtual std::string temporaryFolder() = 0;
  [[nodiscard]] virtual std::string documentsFolder() = 0;

  /// Opens a file with the user's program for files of its kind; false when there is none.
  [[nodiscard]] virtual bool openForUser(const std::string& path) = 0;
  /// Writes to standard output: in the terminal's own encoding, into a file or a pipe as UTF-8.
  virtual void print(const std::string& utf8) = 0;
  /// The program's arguments, without its name.
  [[nodiscard]] virtual std::vector<std::string> arguments(int argc, char** argv) = 0;
};

/// Each platform folder has one of these.
std::unique_ptr<Inspection> makeInspection();

}  // namespace karvel
