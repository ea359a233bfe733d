#include "platform/windows/desktop/win32_look.h"

#include "platform/windows/desktop/win32_scaling.h"

namespace karvel {

Win32Look::Win32Look(UINT dpi) {
  LOGFONTW description = messageFont(dpi);
  font_.reset(CreateFontIndirectW(&description));
  description.lfWeight = FW_BOLD;
  titleFont_.reset(CreateFontIndirectW(&description));
}

COLORREF Win32Look::titleBand() {
  return blended(GetSysColor(COLOR_HIGHLIGHT), background(), 15);
}

COLORREF Win32Look::quietText() {
  return blended(text(), background(), 70);
}

}  // namespace karvel
