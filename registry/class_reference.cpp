#include "registry/class_reference.h"

#include <string>

#include "registry/registry_access.h"

namespace {

enum class Access { Default, All };

/// The answers of opening a class key and, where it opens, of querying it.
struct KeyAnswers {
    LSTATUS open;
    LSTATUS query = ERROR_SUCCESS;
};

KeyAnswers AskClassesKey(const std::string& path, Access access) {
    CUniqueKey key;
    KeyAnswers answers{access == Access::All ? OpenKey(HKEY_CLASSES_ROOT, path.c_str(), kAllAccess, key)
                                             : ::RegOpenKeyA(HKEY_CLASSES_ROOT, path.c_str(), key.Receive())};
    if (answers.open == ERROR_SUCCESS)
        answers.query = ::RegQueryInfoKeyA(key.Get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                           nullptr, nullptr, nullptr, nullptr, nullptr);
    return answers;
}

bool IsMissing(const std::string& path, Access access, MissingRule rule) {
    const KeyAnswers answers = AskClassesKey(path, access);
    return CountsAsMissing(rule, answers.open, answers.query);
}

}  // namespace

LSTATUS TryClassesKey(const char* relativePath) {
    CUniqueKey key;
    return ::RegOpenKeyA(HKEY_CLASSES_ROOT, relativePath, key.Receive());
}

bool ClassesKeyMissing(std::string_view relativePath, MissingRule rule) {
    if (rule == MissingRule::Strict && relativePath.empty()) return false;
    const Access access = rule == MissingRule::LenientAllAccess ? Access::All : Access::Default;
    return IsMissing(std::string(relativePath), access, rule);
}

bool TypeLibMissing(std::string_view guid) {
    return IsMissing("TypeLib\\" + BraceGuid(guid), Access::All, MissingRule::Lenient);
}

bool ClassIdMissing(std::string_view guid) {
    return IsMissing("CLSID\\" + BraceGuid(guid), Access::All, MissingRule::Lenient);
}

bool AppIdMissing(std::string_view guid) {
    return IsMissing("AppID\\" + std::string(guid), Access::Default, MissingRule::Lenient);
}
