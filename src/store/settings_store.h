#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/profile.h"
#include "store/setting_keys.h"

namespace karvel {

/// The settings store: the only access to the two profile files, the program's own and the ticket
/// application's. Names and values are UTF-8. No call throws or shows a message.
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

  /// Stores a value as one line; characters that would break the line are left out. The file is
  /// not touched when it holds the value already. A refused write is tried once more, 100 ms after
  /// the file has been made a normal one. False when that fails too.
  bool WriteIni(std::string_view section, std::string_view key, std::string_view value,
                const std::string& file);

  // ReadIni and WriteIni on the file that the key belongs to.
  [[nodiscard]] std::string read(const OwnKey& key);
  [[nodiscard]] std::string read(const TicketKey& key);
  bool write(const OwnKey& key, std::string_view value);
  bool write(const TicketKey& key, std::string_view value);

  /// Sets OwnIniPath; false when there is no such file.
  bool locateOwnIni(const std::string& programFolder);
  /// Makes the own file with its initial values.
  void createOwnIni(const std::string& programFolder);
  /// Sets TicketIniPath from the own settings, where an empty folder becomes the program's and
  /// is stored so; false when there is no such file.
  bool locateTicketIni(const std::string& programFolder);
  /// Deletes what a program killed in a write may have left of either file, password included.
  void removeLeftovers();

 private:
  [[nodiscard]] bool holds(const std::string& section, const std::string& key,
                           const std::string& value, const std::string& file);
  void SetFileAttr(const std::string& path, std::uint16_t attributes);

  Profile& profile_;
  Files& files_;
  Clock& clock_;
};

}  // namespace karvel
