#include "platform/win/WinFormat.h"

#include <vector>
#include <windows.h>

namespace {

struct StartedProcess
{
    PROCESS_INFORMATION info;
};

} // namespace

std::string winSystemDirectory()
{
    char buffer[256] = {};
    const UINT length = GetSystemDirectoryA(buffer, sizeof buffer);
    if (length < 1)
        return std::string();
    return std::string(buffer);
}

std::string winVolumeLabel(const std::string &drive)
{
    char label[MAX_PATH + 1] = {};
    const std::string root = drive + "\\";
    if (!GetVolumeInformationA(root.c_str(), label, sizeof label, nullptr, nullptr, nullptr, nullptr, 0))
        return std::string();
    return std::string(label);
}

void *winStartHidden(const std::string &commandLine)
{
    STARTUPINFOA startup {};
    startup.cb = sizeof startup; // 68 bytes
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    std::vector<char> command(commandLine.begin(), commandLine.end());
    command.push_back('\0');
    auto *process = new StartedProcess {};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS, nullptr,
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
