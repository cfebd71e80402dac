// A library that nobody should load: it leaves a note of who did, in the file that TALVIX_PLANTED
// names.
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    wchar_t note[MAX_PATH]{};
    if (reason == DLL_PROCESS_ATTACH &&
        GetEnvironmentVariableW(L"TALVIX_PLANTED", note, MAX_PATH) > 0) {
        const HANDLE file =
            CreateFileW(note, FILE_APPEND_DATA, 0, nullptr, OPEN_ALWAYS, 0, nullptr);
        wchar_t program[MAX_PATH]{};
        const DWORD length = GetModuleFileNameW(nullptr, program, MAX_PATH);
        DWORD written = 0;
        WriteFile(file, program, length * sizeof(wchar_t), &written, nullptr);
        CloseHandle(file);
    }
    return TRUE;
}

extern "C" __declspec(dllexport) void CALLBACK Nothing(HWND, HINSTANCE, LPSTR, int) {}
