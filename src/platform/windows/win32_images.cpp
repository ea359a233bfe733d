#include "platform/windows/win32_images.h"

#include "platform/windows/resource_ids.h"
#include "platform/windows/win32_module.h"

namespace karvel {
namespace {

Win32Icon load(int resource, int size) {
  const HINSTANCE module = GetModuleHandleW(nullptr);
  const wchar_t* const name = MAKEINTRESOURCEW(resource);
  // Sizes between the drawn ones look better made from the next larger one.
  const auto loadScaledDown = newerFunction<HRESULT WINAPI(HINSTANCE, PCWSTR, int, int, HICON*)>(
      L"comctl32.dll", "LoadIconWithScaleDown");
  HICON icon = nullptr;
  if (loadScaledDown != nullptr && SUCCEEDED(loadScaledDown(module, name, size, size, &icon))) {
    return Win32Icon(icon);
  }
  return Win32Icon(
      static_cast<HICON>(LoadImageW(module, name, IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
}

}  // namespace

Win32Icon trayImage(TrayImage image, int size) {
  return load(image == TrayImage::kFailure ? KARVEL_ICON_FAILURE : KARVEL_ICON_NORMAL, size);
}

Win32Icon windowImage(int size) {
  return load(KARVEL_ICON_WINDOW, size);
}

}  // namespace karvel
