#pragma once

#include <string>

#include "platform/files.h"
#include "send/delivery.h"
#include "store/run_log.h"
#include "store/settings_store.h"

namespace karvel {

/// Delivers the shop information file: "<group code><shop code>.inf", one line of nine
/// TAB-separated fields that tells head office whose statistics follow.
class ShopInfo {
 public:
  ShopInfo(IniRedWrt& settings, RunLog& log, Files& files, const std::string& programFolder);

  /// Removes the file of a previous identifier from the destination, then makes, delivers and
  /// deletes the current one. Without a valid identifier (seven characters, a positive number, no
  /// path) nothing is done; a previous identifier with a path removes nothing. Failures are
  /// ignored.
  void Ftp_ShopFold(Delivery& destination);

  /// True for the group code and shop code, put together, of a shop that has such a file.
  [[nodiscard]] static bool isValidIdentifier(const std::string& identifier);

 private:
  void removePrevious(const std::string& identifier, Delivery& destination);
  void deliver(const std::string& name, Delivery& destination);
  [[nodiscard]] std::string line();

  IniRedWrt& settings_;
  RunLog& log_;
  Files& files_;
  std::string programFolder_;  ///< ends in the separator
};

}  // namespace karvel
