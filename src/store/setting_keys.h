#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace karvel {

/// Text fields of the settings panel, by their index. The panel is the working copy of the
/// settings that they stand for.
struct PanelField {
  enum Index : int {
    kServer,
    kSiteFolder,
    kAccount,
    kPassword,
    kPort,
    kShopCode,
    kShopName,
    kOutputFolder,
    kGroupCode,
    kGroupName,
  };
};

/// Sections as the settings files spell them.
namespace section {
inline constexpr std::string_view kFtp = "FTP INFOMATION";
inline constexpr std::string_view kUser = "USER INFOMATION";
inline constexpr std::string_view kShop = "KARVEL1 INFOMATION";
inline constexpr std::string_view kDesks = "TASHIN INFOMATION";
inline constexpr std::string_view kMail = "MAIL INFOMATION";
}  // namespace section

/// A key of the program's own settings file, in its only section kFtp.
struct OwnKey {
  static constexpr int kNoField = -1;

  std::string_view name;
  std::string_view initial = "";  ///< value in a new file
  int field = kNoField;           ///< the panel's text field for it
};

/// A key of the ticket application's settings file.
struct TicketKey {
  std::string_view section;
  std::string_view name;
};

namespace own {

// The user's own FTP site.
inline constexpr OwnKey kServer{"FTP SEVE", "", PanelField::kServer};
inline constexpr OwnKey kSiteFolder{"FTP FOLD", "", PanelField::kSiteFolder};
inline constexpr OwnKey kAccount{"FTP NAME", "", PanelField::kAccount};
inline constexpr OwnKey kPassword{"FTP PASS", "", PanelField::kPassword};
inline constexpr OwnKey kPort{"FTP PORT", "21", PanelField::kPort};
inline constexpr OwnKey kPassive{"FTP PSIV", "1"};  ///< 0: active mode

inline constexpr OwnKey kShopCode{"FTP CODE", "", PanelField::kShopCode};
inline constexpr OwnKey kInterval{"FTP TIME", "0"};  ///< option of SendInterval
inline constexpr OwnKey kTicketFolder{"HST FOLD"};   ///< initially the program's folder
inline constexpr OwnKey kOutputFolder{"OUT FOLD", "", PanelField::kOutputFolder};
inline constexpr OwnKey kDestination{"FTP TYPE", "3"};    ///< FtpForm::Destination
inline constexpr OwnKey kFolderReached{"FTP CHKC", "0"};  ///< 1 once a run has succeeded
inline constexpr OwnKey kSiteReached{"FTP CHKF", "0"};    ///< likewise
inline constexpr OwnKey kGroupCode{"GRUP CODE", "9999", PanelField::kGroupCode};
inline constexpr OwnKey kGroupName{"GRUP NAME", "るりはなリンク", PanelField::kGroupName};

/// What a new file holds, in its order.
inline constexpr std::array kInitialKeys{
    kServer,      kSiteFolder,    kAccount,     kPassword,     kPort,
    kPassive,     kShopCode,      kInterval,    kTicketFolder, kOutputFolder,
    kDestination, kFolderReached, kSiteReached, kGroupCode,    kGroupName,
};

/// Group code and shop code of the last shop information file.
inline constexpr OwnKey kPreviousShop{"GRUP BACK"};

// Requests of other programs, reset at every start.
inline constexpr OwnKey kExitRequest{"FTP EXIT"};   ///< not 0: send once more and end
inline constexpr OwnKey kPanelRequest{"FTP INIT"};  ///< not 0: show the panel; 2: and the group

}  // namespace own

namespace ticket {

inline constexpr TicketKey kBusinessDay{section::kUser, "TODAY"};
inline constexpr TicketKey kUserCode{section::kUser, "USER CODE"};
inline constexpr TicketKey kShopName{section::kShop, "USER NAME"};
inline constexpr TicketKey kLastDesk{section::kDesks, "SHINSATSU"};  ///< desks minus one
inline constexpr std::array kDeskNames{
    TicketKey{section::kDesks, "TASHIN1"}, TicketKey{section::kDesks, "TASHIN2"},
    TicketKey{section::kDesks, "TASHIN3"}, TicketKey{section::kDesks, "TASHIN4"},
    TicketKey{section::kDesks, "TASHIN5"}, TicketKey{section::kDesks, "TASHIN6"},
};
inline constexpr TicketKey kMailDomain{section::kMail, "DOMAIN"};

// The service site.
inline constexpr TicketKey kDomain{section::kFtp, "DOMAIN"};  ///< empty: the site is not offered
inline constexpr TicketKey kAccount{section::kFtp, "FTP USER"};
inline constexpr TicketKey kCustomerCode{section::kFtp, "FTP CODE"};
inline constexpr TicketKey kMode{section::kFtp, "FTP MODE"};  ///< passive when it has "pasv"
inline constexpr TicketKey kPort{section::kFtp, "FTP PORT"};
inline constexpr TicketKey kWebGroup{section::kFtp, "FTP GRUP"};

}  // namespace ticket

}  // namespace karvel
