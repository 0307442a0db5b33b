#include "platform/Registry.h"

#include "text/PathText.h"

#include <windows.h>

#include <filesystem>

namespace vantrel {

std::optional<std::string> GetKeyValue(RegistryRoot root, const std::string& keyPath, const std::string& valueName) {
    const HKEY key = root == RegistryRoot::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
    const std::wstring path = PathFromUtf8(keyPath).wstring();
    const std::wstring name = PathFromUtf8(valueName).wstring();
    // Variables in the text are filled in by the host.
    constexpr DWORD asText = RRF_RT_REG_SZ;
    DWORD bytes = 0;
    if (RegGetValueW(key, path.c_str(), name.c_str(), asText, nullptr, nullptr, &bytes) != ERROR_SUCCESS)
        return std::nullopt;
    std::wstring value(bytes / sizeof(wchar_t), L'\0');
    if (RegGetValueW(key, path.c_str(), name.c_str(), asText, nullptr, value.data(), &bytes) != ERROR_SUCCESS)
        return std::nullopt;
    while (!value.empty() && value.back() == L'\0')
        value.pop_back();
    return Utf8FromPath(std::filesystem::path(value));
}

} // namespace vantrel
