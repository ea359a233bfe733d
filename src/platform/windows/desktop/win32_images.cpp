#include "platform/windows/desktop/win32_images.h"

#include "platform/windows/resource_ids.h"

namespace karvel {
namespace {

Win32Icon load(int resource, int size) {
  return Win32Icon(
      static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource),
                                    IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
}

}  // namespace

Win32Icon trayImage(TrayImage image, int size) {
  return load(image == TrayImage::kFailure ? KARVEL_ICON_FAILURE : KARVEL_ICON_NORMAL, size);
}

Win32Icon windowImage(int size) {
  return load(KARVEL_ICON_WINDOW, size);
}

}  // namespace karvel
