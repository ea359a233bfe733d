#include "send/send_settings.h"

#include <array>
#include <string>

#include "text/strings.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;
using Destination = FtpForm::Destination;

struct StoredField {
  const char* key;
  Field::Index field;
};

constexpr std::array kStoredFields{
    StoredField{"OUT FOLD", Field::kOutputFolder}, StoredField{"FTP SEVE", Field::kServer},
    StoredField{"FTP FOLD", Field::kSiteFolder},   StoredField{"FTP NAME", Field::kAccount},
    StoredField{"FTP PASS", Field::kPassword},     StoredField{"FTP PORT", Field::kPort},
};

/// The tick counter after a save, by interval.
constexpr std::array<std::int16_t, FtpForm::Interval::kCount> kPresets{0, 60, 210, 360, 810};

}  // namespace

void SendSettings::Save_FtpInfo() {
  writeDestination();
  withdrawFlags();
  writeInterval();
}

void SendSettings::writeDestination() {
  int type = Destination::kOutputFolder;
  while (type < Destination::kNone && !form_.Option2[type].selected()) ++type;
  settings_.writeOwn("FTP TYPE", std::to_string(type));
  for (const auto& [key, field] : kStoredFields) {
    settings_.writeOwn(key, trimmed(form_.text(field)));
  }
  settings_.writeOwn("FTP PSIV", std::to_string(form_.chkPassive.value()));
}

void SendSettings::withdrawFlags() {
  if (!form_.shopCodeValid() || form_.destinationIs(Destination::kNone)) {
    settings_.writeOwn("FTP CHKC", "0");
    settings_.writeOwn("FTP CHKF", "0");
    return;
  }
  const bool folderMissing = form_.text(Field::kOutputFolder).empty();
  if (form_.destinationIs(Destination::kOutputFolder) && folderMissing) {
    settings_.writeOwn("FTP CHKC", "0");
  }
  const bool accountIncomplete = form_.text(Field::kServer).empty() ||
                                 form_.text(Field::kAccount).empty() ||
                                 form_.text(Field::kPassword).empty();
  if (form_.destinationIs(Destination::kUserSite) && accountIncomplete) {
    settings_.writeOwn("FTP CHKF", "0");
  }
}

void SendSettings::writeInterval() {
  for (int interval = 0; interval < FtpForm::Interval::kCount; ++interval) {
    if (!form_.Option1[interval].selected()) continue;
    form_.TimerCount = kPresets[static_cast<std::size_t>(interval)];
    settings_.writeOwn("FTP TIME", std::to_string(interval));
    return;
  }
}

}  // namespace karvel
