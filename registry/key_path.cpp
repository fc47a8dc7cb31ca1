#include "registry/key_path.h"

#include "registry/key_path_rules.h"
#include "registry/registry_access.h"

HKEY RootHandle(std::uint32_t number) {
    // Predefined handles are sign-extended where pointers are longer than their 32 bits.
    return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(number)));
}

std::optional<KeyLocation> SplitKeyPath(std::string_view path) {
    const SplitPath split = SplitKeyPathText(path);
    if (!split.root) return std::nullopt;
    return KeyLocation{RootHandle(*split.root), split.subkey.value_or(std::string())};
}

std::optional<std::string> FormatWriteTime(std::string_view path) {
    const std::optional<KeyLocation> location = SplitKeyPath(path);
    if (!location) return std::nullopt;
    CUniqueKey key;
    if (OpenKey(location->root, location->subkey.c_str(), kReadAccess, key) != ERROR_SUCCESS)
        return std::nullopt;
    return QueryWriteTime(key.Get());
}
