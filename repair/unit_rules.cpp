#include "repair/unit_rules.h"

#include <initializer_list>

namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::string_view kClasses = R"(Classes\)";
constexpr std::size_t kGuidLength = 38;  // characters, braces included

/// A path as a unit. One without a last name, as a key whose name begins with a zero byte has, opens the key
/// above: that is never a unit.
Unit UnitOf(std::string path) {
    if (path.empty() || path.ends_with('\\')) return std::nullopt;
    return path;
}

/// The entry's key as the patterns see it: a key path, root name included. Remembers how much of it is not
/// part of the subkey path.
class CKeyText {
public:
    explicit CKeyText(const EntryKey& key) : m_rootLength(key.rootName.size() + 2) {
        m_text.reserve(m_rootLength + key.subkeyPath.size());
        m_text.append("\\").append(key.rootName).append("\\").append(key.subkeyPath);
    }

    [[nodiscard]] std::string_view Text() const { return m_text; }
    [[nodiscard]] std::size_t Find(std::string_view pattern, std::size_t from = 0) const {
        return m_text.find(pattern, from);
    }
    [[nodiscard]] bool StartsWith(std::string_view pattern) const { return Text().starts_with(pattern); }
    /// The subkey path up to a place in the text.
    [[nodiscard]] Unit PathUpTo(std::size_t end) const {
        return UnitOf(m_text.substr(m_rootLength, end - m_rootLength));
    }
    [[nodiscard]] Unit WholePath() const { return UnitOf(m_text.substr(m_rootLength)); }
    /// The end of the key name that starts at a place.
    [[nodiscard]] std::size_t EndOfName(std::size_t start) const {
        const std::size_t end = m_text.find('\\', start);
        return end == kNone ? m_text.size() : end;
    }

private:
    std::size_t m_rootLength;
    std::string m_text;
};

/// The backslash in front of the first key of one of these names from a place on.
std::size_t FindKeyNamed(const CKeyText& text, std::initializer_list<std::string_view> names,
                         std::size_t from) {
    for (std::size_t at = text.Find("\\", from); at != kNone; at = text.Find("\\", at + 1)) {
        const std::string_view name = text.Text().substr(at + 1, text.EndOfName(at + 1) - at - 1);
        for (const std::string_view wanted : names)
            if (name == wanted) return at;
    }
    return kNone;
}

/// The place behind the first key below "Classes", where the keys inside of a class begin.
std::size_t EndOfClassName(const CKeyText& text) {
    const std::size_t classes = text.Find(kClasses);
    return classes == kNone ? kNone : text.EndOfName(classes + kClasses.size());
}

Unit GuidUnit(const EntryKey& key, std::string_view pattern) {
    const CKeyText text(key);
    const std::size_t found = text.Find(pattern);
    if (found == kNone) return std::nullopt;
    const std::size_t guid = found + pattern.size() - 1;  // the pattern ends with the opening brace
    const std::size_t end = text.EndOfName(guid);
    if (end - guid != kGuidLength) return std::nullopt;
    return text.PathUpTo(end);
}

/// The entry's own key, where it lies below the key that a pattern names.
Unit OwnKeyBelow(const CKeyText& text, std::string_view pattern, std::size_t from = 0) {
    const std::size_t found = text.Find(pattern, from);
    if (found == kNone || text.EndOfName(found + pattern.size()) == text.Text().size()) return std::nullopt;
    return text.WholePath();
}

Unit OwnKeyUnder(const EntryKey& key, std::initializer_list<std::string_view> openings) {
    const CKeyText text(key);
    for (const std::string_view opening : openings)
        if (text.StartsWith(opening)) return text.WholePath();
    return std::nullopt;
}

}  // namespace

Unit ClsidUnit(const EntryKey& key) { return GuidUnit(key, R"(Classes\CLSID\{)"); }

Unit TypeLibUnit(const EntryKey& key) { return GuidUnit(key, R"(Classes\TypeLib\{)"); }

Unit DefaultIconClassUnit(const EntryKey& key) {
    const CKeyText text(key);
    const std::size_t inside = EndOfClassName(text);
    if (inside == kNone) return std::nullopt;
    const std::size_t icon = FindKeyNamed(text, {"DefaultIcon"}, inside);
    if (icon == kNone) return std::nullopt;
    return text.PathUpTo(icon);
}

Unit ShellCommandClassUnit(const EntryKey& key) {
    const CKeyText text(key);
    const std::size_t inside = EndOfClassName(text);
    if (inside == kNone) return std::nullopt;
    const std::size_t shell = FindKeyNamed(text, {"shell", "Shell"}, inside);
    if (shell == kNone || FindKeyNamed(text, {"command", "Command"}, shell + 1) == kNone) return std::nullopt;
    return text.PathUpTo(shell);
}

Unit InstallerComponentUnit(const EntryKey& key) {
    const CKeyText text(key);
    constexpr std::string_view kUserData = R"(Microsoft\Windows\CurrentVersion\Installer\UserData)";
    const std::size_t users = text.Find(kUserData);
    if (users == kNone) return std::nullopt;
    return OwnKeyBelow(text, R"(\Components)", users + kUserData.size());
}

Unit AppPathUnit(const EntryKey& key) {
    return OwnKeyBelow(CKeyText(key), R"(Microsoft\Windows\CurrentVersion\App Paths)");
}

Unit EventlogSourceUnit(const EntryKey& key) {
    return OwnKeyBelow(CKeyText(key), R"(Services\Eventlog\Application)");
}

Unit UninstallUnit(const EntryKey& key) {
    const CKeyText text(key);
    constexpr std::string_view kProducts =
        R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\)";
    if (!text.StartsWith(kProducts)) return std::nullopt;
    return text.PathUpTo(text.EndOfName(kProducts.size()));
}

Unit MenuOrderUnit(const EntryKey& key) {
    return OwnKeyUnder(
        key,
        {R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\MenuOrder\Start Menu\Programs\)"});
}

Unit ArpCacheUnit(const EntryKey& key) {
    return OwnKeyUnder(
        key, {R"(\HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\App Management\ARPCache\)"});
}

Unit SoftwareUnit(const EntryKey& key) {
    return OwnKeyUnder(key, {R"(\HKEY_CURRENT_USER\Software\)", R"(\HKEY_LOCAL_MACHINE\Software\)"});
}

Unit ComFamilyUnit(const EntryKey& key) {
    struct Family {
        std::string_view opening;
        std::string_view member;
        std::string_view name;
    };
    static constexpr Family kFamilies[] = {
        {R"(\HKEY_CLASSES_ROOT\CLSID)", R"(\CLSID\{)", "CLSID"},
        {R"(\HKEY_CLASSES_ROOT\TypeLib)", R"(\TypeLib\{)", "TypeLib"},
        {R"(\HKEY_CLASSES_ROOT\Interface)", R"(\Interface\{)", "Interface"},
    };
    const CKeyText text(key);
    for (const Family& family : kFamilies) {
        if (!text.StartsWith(family.opening)) continue;
        const std::string_view rest = text.Text().substr(family.opening.size());
        if (!rest.starts_with('\\')) return text.WholePath();
        // The first of the three that is there decides, wherever it stands.
        for (const Family& chosen : kFamilies)
            if (text.Find(chosen.member) != kNone) return UnitOf(std::string(chosen.name).append(rest));
        return text.WholePath();
    }
    return std::nullopt;
}

Unit FileExtsUnit(const EntryKey& key) {
    return OwnKeyUnder(
        key, {R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts\)"});
}

Unit RecentDocsUnit(const EntryKey& key) {
    return OwnKeyUnder(
        key, {R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\RecentDocs\)"});
}

ParentAndName SplitLastKey(std::string_view path) {
    const std::size_t cut = path.rfind('\\');
    if (cut == kNone) return {"", std::string(path)};
    return {std::string(path.substr(0, cut)), std::string(path.substr(cut + 1))};
}
