// The least that a Windows program with an icon in the notification area can be: what the real
// program is measured against.

#include <windows.h>

#include <shellapi.h>

int WINAPI WinMain(HINSTANCE module, HINSTANCE, LPSTR, int) {
  WNDCLASSW description{};
  description.lpfnWndProc = DefWindowProcW;
  description.hInstance = module;
  description.lpszClassName = L"bare_tray";
  RegisterClassW(&description);

  NOTIFYICONDATAW icon{};
  icon.cbSize = sizeof icon;
  icon.hWnd = CreateWindowExW(0, description.lpszClassName, L"", WS_OVERLAPPEDWINDOW, 0, 0, 100,
                              100, nullptr, nullptr, module, nullptr);
  icon.uID = 1;
  icon.uFlags = NIF_MESSAGE | NIF_ICON;
  icon.uCallbackMessage = WM_APP;
  icon.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  Shell_NotifyIconW(NIM_ADD, &icon);

  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}
