#include "platform/windows/system/system_clock.h"

#include <windows.h>

namespace karvel {

DateTime SystemClock::now() {
  SYSTEMTIME local{};
  GetLocalTime(&local);
  return {local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond};
}

void SystemClock::sleep(std::chrono::milliseconds time) {
  Sleep(static_cast<DWORD>(time.count()));
}

}  // namespace karvel
