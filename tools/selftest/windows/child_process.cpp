#include "selftest/windows/child_process.h"

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/windows/system/wide_text.h"
#include "platform/windows/system/win32_handle.h"

namespace karvel {
namespace {

constexpr UINT kStopped = 2;
constexpr DWORD kEndLimit = 5000;  ///< milliseconds that a stopped program may still need

Win32Handle inheritableFile(const std::string& path) {
  SECURITY_ATTRIBUTES attributes{sizeof attributes, nullptr, TRUE};
  HANDLE file = CreateFileW(toWide(path).c_str(), FILE_APPEND_DATA | SYNCHRONIZE,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &attributes,
                            CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  return Win32Handle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

/// Whatever is in it ends with it.
Win32Handle makeJob() {
  Win32Handle job(CreateJobObjectW(nullptr, nullptr));
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
  return job;
}

std::string contentOf(const std::string& path) {
  std::ifstream file(std::filesystem::path(toWide(path)), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void start(const std::string& program, const std::string& arguments, HANDLE output,
           PROCESS_INFORMATION& process) {
  const std::filesystem::path path(toWide(program));
  std::wstring command = L'"' + path.native() + L"\" " + toWide(arguments);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output;
  startup.hStdError = output;
  CreateProcessW(path.c_str(), command.data(), nullptr, nullptr, TRUE,
                 CREATE_NO_WINDOW | CREATE_SUSPENDED, nullptr, path.parent_path().c_str(), &startup,
                 &process);
}

}  // namespace

Ending runChild(const std::string& program, const std::string& arguments,
                const std::string& outputFile, std::chrono::seconds limit) {
  const auto begin = std::chrono::steady_clock::now();
  Ending ending;
  PROCESS_INFORMATION information{};
  const Win32Handle output = inheritableFile(outputFile);
  start(program, arguments, output.get(), information);
  const Win32Handle process(information.hProcess);
  const Win32Handle thread(information.hThread);
  if (!process) {
    ending.trouble = "起動できません(エラー" + std::to_string(GetLastError()) + ")";
    return ending;
  }
  const Win32Handle job = makeJob();
  AssignProcessToJobObject(job.get(), process.get());
  ResumeThread(thread.get());
  const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(limit).count();
  if (WaitForSingleObject(process.get(), static_cast<DWORD>(milliseconds)) == WAIT_OBJECT_0) {
    DWORD code = 0;
    GetExitCodeProcess(process.get(), &code);
    ending.exitCode = code;
  } else {
    // On Windows 7 it may be in a job already, and then is in no other one.
    TerminateJobObject(job.get(), kStopped);
    TerminateProcess(process.get(), kStopped);
    WaitForSingleObject(process.get(), kEndLimit);
    ending.trouble = std::to_string(limit.count()) + "秒で終わらず、止めました";
  }
  ending.seconds = static_cast<int>(
      std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - begin)
          .count());
  ending.output = contentOf(outputFile);
  return ending;
}

}  // namespace karvel
