#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ftp/mc_win_ftp.h"
#include "ui/ftp_form.h"

namespace karvel {

/// The server's current folder as of the last refresh: lines of the list box, and tables that are
/// searched instead of asking the server again.
class RemoteListing {
 public:
  /// Entries of each kind that the tables keep; the list box shows them all.
  static constexpr std::size_t kSlots = 10001;
  /// Characters of a slot; of a longer line the rest is not searched.
  static constexpr std::size_t kSlotWidth = 128;

  RemoteListing(FtpForm& form, McWinFTP& clsFtp) : form_(form), clsFtp_(clsFtp) {}

  /// Reads the current folder of the open session. When the enumeration fails, what has been read
  /// until then is kept.
  void Ftp_ListFiles();

  /// The slot of the first folder line that contains `part`.
  [[nodiscard]] std::optional<std::size_t> findFolder(std::string_view part) const;
  /// The same for file lines.
  [[nodiscard]] std::optional<std::size_t> findFile(std::string_view part) const;

  /// The size in bytes of the file in a slot; 2 GiB and more count as 2147483647.
  [[nodiscard]] std::int32_t fileSize(std::size_t slot) const { return FileSizes_[slot]; }

 private:
  void store(const FTPFile& entry, std::vector<std::string>& shown);
  [[nodiscard]] std::optional<std::size_t> find(const std::vector<std::size_t>& slots,
                                                std::string_view part) const;

  FtpForm& form_;
  McWinFTP& clsFtp_;
  std::vector<std::size_t> DirLines_;  ///< where the list box has the line of each slot
  std::vector<std::size_t> FileLines_;
  std::vector<std::int32_t> FileSizes_;
};

}  // namespace karvel
