#include "platform/win/WinFormat.h"

#include <vector>
#include <windows.h>

namespace {

struct StartedProcess
{
    PROCESS_INFORMATION info;
};

} // namespace

std::wstring winSystemDirectory()
{
    wchar_t buffer[256] = {};
    const UINT length = GetSystemDirectoryW(buffer, 256);
    if (length < 1 || length >= 256)
        return std::wstring();
    return std::wstring(buffer);
}

std::wstring winVolumeLabel(const std::wstring &drive)
{
    wchar_t label[MAX_PATH + 1] = {};
    const std::wstring root = drive + L"\\";
    if (!GetVolumeInformationW(root.c_str(), label, MAX_PATH + 1, nullptr, nullptr, nullptr, nullptr, 0))
        return std::wstring();
    return std::wstring(label);
}

unsigned winConsoleCodePage()
{
    return GetOEMCP();
}

void *winStartHidden(const std::wstring &commandLine)
{
    STARTUPINFOW startup {};
    startup.cb = sizeof startup; // 68 bytes
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    std::vector<wchar_t> command(commandLine.begin(), commandLine.end());
    command.push_back(L'\0');
    auto *process = new StartedProcess {};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS, nullptr,
                        nullptr, &startup, &process->info)) {
        delete process;
        return nullptr;
    }
    return process;
}

bool winProcessEnded(void *process, unsigned milliseconds)
{
    return WaitForSingleObject(static_cast<StartedProcess *>(process)->info.hProcess, milliseconds)
        == WAIT_OBJECT_0;
}

void winCloseProcess(void *process)
{
    auto *started = static_cast<StartedProcess *>(process);
    CloseHandle(started->info.hThread);
    CloseHandle(started->info.hProcess);
    delete started;
}
