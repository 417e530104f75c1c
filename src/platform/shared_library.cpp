#include "platform/shared_library.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <system_error>

#ifdef _WIN32

std::filesystem::path PROGRAM_FOLDER() {
    std::wstring name(32768, L'\0');  // the longest path there is
    name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
    return std::filesystem::path(name).parent_path();
}

std::string SHARED_LIBRARY_NAME(std::string_view name) { return std::string(name) + ".dll"; }

void* LOAD_SHARED_LIBRARY(const std::filesystem::path& file, std::string& reason) {
    HMODULE library = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (library == nullptr) reason = std::system_category().message(static_cast<int>(GetLastError()));
    return reinterpret_cast<void*>(library);
}

void* SHARED_LIBRARY_SYMBOL(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(reinterpret_cast<HMODULE>(library), name));
}

#else

std::filesystem::path PROGRAM_FOLDER() {
    std::error_code failed;
    return std::filesystem::read_symlink("/proc/self/exe", failed).parent_path();
}

std::string SHARED_LIBRARY_NAME(std::string_view name) { return "lib" + std::string(name) + ".so"; }

void* LOAD_SHARED_LIBRARY(const std::filesystem::path& file, std::string& reason) {
    void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) reason = dlerror();
    return library;
}

void* SHARED_LIBRARY_SYMBOL(void* library, const char* name) { return dlsym(library, name); }

#endif
