#pragma once

#include <string>

#include "ftp/ftp_site.h"
#include "send/folder_copy.h"
#include "store/run_log.h"
#include "store/settings_store.h"
#include "ui/ftp_form.h"

namespace karvel {

/// Delivers the shop information file: "<group code><shop code>.inf", one line of nine
/// TAB-separated fields that tells head office whose statistics follow.
class ShopInfo {
 public:
  ShopInfo(FtpForm& form, IniRedWrt& settings, RunLog& log, Files& files, FolderCopy& folder,
           FtpSite& site, const std::string& programFolder);

  /// Removes the file of a previous identifier from the destination, then makes, delivers and
  /// deletes the current one. Without a valid identifier (seven characters, a positive number)
  /// nothing is done. Failures go unnoticed.
  void Ftp_ShopFold();

 private:
  void removePrevious(const std::string& identifier);
  void deliver(const std::string& name);
  [[nodiscard]] std::string line();

  FtpForm& form_;
  IniRedWrt& settings_;
  RunLog& log_;
  Files& files_;
  FolderCopy& folder_;
  FtpSite& site_;
  std::string programFolder_;  ///< ends in the separator
};

}  // namespace karvel
