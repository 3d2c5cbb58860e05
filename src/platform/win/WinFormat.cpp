#include "platform/win/WinFormat.h"

#include <vector>
#include <windows.h>

namespace {

struct StartedProcess
{
    PROCESS_INFORMATION info;
};

// The system's sentence for an error code, without its line end; the code itself when it has none.
std::wstring systemMessage(DWORD code)
{
    wchar_t *text = nullptr;
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM
                                            | FORMAT_MESSAGE_IGNORE_INSERTS,
                                        nullptr, code, 0, reinterpret_cast<wchar_t *>(&text), 0, nullptr);
    std::wstring message = length ? std::wstring(text, length) : L"error " + std::to_wstring(code);
    LocalFree(text);
    while (!message.empty() && (message.back() == L'\n' || message.back() == L'\r' || message.back() == L' '))
        message.pop_back();
    return message;
}

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

void *winStartHidden(const std::wstring &commandLine, std::wstring &reason)
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
        reason = systemMessage(GetLastError());
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
