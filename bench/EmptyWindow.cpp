// Without arguments, shows an empty window, the baseline for startup times. Otherwise, starts the program given by the
// arguments several times and prints the median number of milliseconds until its window is visible.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int Runs = 5;

BOOL CALLBACK StopAtVisibleWindow(HWND window, LPARAM parameter) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != static_cast<DWORD>(parameter) || !IsWindowVisible(window)) {
        return TRUE;
    }
    SetLastError(ERROR_SUCCESS);
    return FALSE;
}

bool HasVisibleWindow(DWORD process) {
    return !EnumWindows(StopAtVisibleWindow, static_cast<LPARAM>(process));
}

double Milliseconds() {
    LARGE_INTEGER now;
    LARGE_INTEGER perSecond;
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&perSecond);
    return static_cast<double>(now.QuadPart) * 1000 / static_cast<double>(perSecond.QuadPart);
}

double MeasureStart(std::wstring commandLine) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    const double begin = Milliseconds();
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process)) {
        return -1;
    }
    while (!HasVisibleWindow(process.dwProcessId) && WaitForSingleObject(process.hProcess, 1) == WAIT_TIMEOUT) {
    }
    const double end = Milliseconds();
    TerminateProcess(process.hProcess, 0);
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return end - begin;
}

int ShowEmptyWindow() {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = L"EmptyWindow";
    RegisterClassExW(&windowClass);
    const HWND window = CreateWindowExW(0, windowClass.lpszClassName, L"Empty", WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU,
                                        CW_USEDEFAULT, CW_USEDEFAULT, 243, 167, nullptr, nullptr, nullptr, nullptr);
    ShowWindow(window, SW_SHOW);
    MSG message;
    while (IsWindow(window) && GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    return 0;
}

}  // namespace

int wmain(int argumentCount, wchar_t** arguments) {
    if (argumentCount < 2) {
        return ShowEmptyWindow();
    }
    std::wstring commandLine = arguments[1];
    for (int number = 2; number < argumentCount; ++number) {
        commandLine.append(L" ").append(arguments[number]);
    }
    std::vector<double> times;
    for (int run = 0; run <= Runs; ++run) {
        times.push_back(MeasureStart(commandLine));
    }
    times.erase(times.begin());  // the first start warms the caches
    std::sort(times.begin(), times.end());
    std::printf("%.1f\n", times[Runs / 2]);
    return 0;
}
