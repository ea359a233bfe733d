#pragma once

#include <string>

#include "platform/files.h"
#include "store/settings_store.h"

namespace karvel {

/// The service site's servers: built-in values, or those of "kvserver.ini" in the program's
/// folder. In that file a line of at least five characters is an entry: four characters that begin
/// with the entry's number, a separator, and the value.
class ServerList {
 public:
  ServerList(Files& files, IniRedWrt& settings, const std::string& programFolder);

  std::string MailDomain;     ///< entry 3
  std::string FtpServerHost;  ///< entry 4
  std::string FtpDomain;      ///< entry 5

  /// Reads the list again and writes its domains into the ticket application's settings where
  /// those hold different ones.
  void LoadServerList();

 private:
  void takeLine(const std::string& line);
  void updateDomain(const TicketKey& key, const std::string& domain);

  Files& files_;
  IniRedWrt& settings_;
  std::string path_;
};

}  // namespace karvel
