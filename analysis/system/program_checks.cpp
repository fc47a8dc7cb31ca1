// Checks of programs' own registrations: paths, uninstall entries, the cache of program details.

#include <memory>
#include <new>
#include <string>

#include "analysis/check_walk.h"
#include "analysis/system/cache_record_rules.h"
#include "analysis/system/system_checks.h"
#include "registry/file_reference.h"

namespace {

const CheckArea kAppPaths =
    AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths)");
const CheckArea kUninstall =
    AreaAt(R"(\HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall)");
const CheckArea kArpCache =
    AreaAt(R"(\HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\App Management\ARPCache)");

constexpr char kCacheValue[] = "SlowInfoCache";

void CheckAppPath(const Subkey& entry) {
    const CUniqueKey key = OpenForAll(entry.parent, entry.name);
    if (!key) return;
    CValueReader first(kValueNameBytes, kValueDataBytes);
    const LSTATUS result = first.Read(key.Get(), 0);
    if ((result == ERROR_SUCCESS || result == ERROR_NO_MORE_ITEMS) && !first.HasData())
        entry.Report(reasons::kNoData, first.Name(), first.Data());
    ForEachValueOf(key.Get(), {kValueNameBytes, kValueDataBytes}, [&](const CValueReader& value) {
        if (value.Type() != REG_SZ) return;
        if (!value.HasName() && value.HasData() && !CommandFileExists(value.Data()))
            entry.Report(reasons::kModuleMissing, "", value.Data());
        // Deliberate: asked again for every text value, so a key without a default value has a row for each.
        if (QueryText(key.Get(), "", kValueDataBytes).IsAbsent()) entry.Report(reasons::kNoDefault);
    });
}

void CheckReferences(const Subkey& entry, HKEY product) {
    const QueriedText source = QueryTextExactly(product, "InstallSource", kValueDataBytes, &PollCancel);
    if (source.type == REG_SZ && !source.text.empty() && PathIsMissing(source.text))
        entry.Report(reasons::kFileMissing, "InstallSource", source.text.c_str());
    QueriedText icon = QueryTextExactly(product, "DisplayIcon", kValueDataBytes, &PollCancel);
    icon.text = icon.text.substr(0, icon.text.find(','));  // the picture's number
    if (icon.type == REG_SZ && !icon.text.empty() && PathIsMissing(icon.text))
        entry.Report(reasons::kFileMissing, "DisplayIcon", icon.text.c_str());
}

/// Whether a key's only content is a default value with empty data.
bool HoldsEmptyDefaultOnly(HKEY key) {
    CValueReader value(kValueNameBytes, kValueDataBytes);
    if (value.Read(key, 0) != ERROR_SUCCESS || value.HasName() || value.HasData()) return false;
    CValueReader second(kValueNameBytes, kNamesOnly);
    return second.Read(key, 1) == ERROR_NO_MORE_ITEMS && HasNoSubkeys(key);
}

void CheckProduct(const Subkey& entry) {
    const CUniqueKey product = OpenForAll(entry.parent, entry.name);
    if (!product) return;
    CheckReferences(entry, product.Get());
    if (QueryTextExactly(product.Get(), "UninstallString", kValueDataBytes, &PollCancel).IsAbsent() &&
        !QueryTextExactly(product.Get(), "SystemComponent", kValueDataBytes, &PollCancel).Succeeded())
        entry.Report(reasons::kNoUninstallCommand);
    if (HoldsNothing(product.Get())) entry.Report(reasons::kNothingInKey);
    if (HoldsEmptyDefaultOnly(product.Get())) entry.Report(reasons::kNoContent);
}

std::string InCodePage(const std::u16string& path) {
    char text[3 * kLongestCachedPath + 1] = "";  // a character takes up to three bytes
    const int length =
        ::WideCharToMultiByte(CP_ACP, 0, reinterpret_cast<const wchar_t*>(path.data()),
                              static_cast<int>(path.size()), text, sizeof text - 1, nullptr, nullptr);
    return {text, static_cast<std::size_t>(length)};
}

Walk CheckCacheEntry(const Subkey& entry) {
    const CUniqueKey key = OpenForAll(entry.parent, entry.name);
    if (!key) return Walk::Next;
    DWORD bytes = 0;
    if (FindValueNamed(key.Get(), kCacheValue, &PollCancel) != ERROR_SUCCESS ||
        ::RegQueryValueExA(key.Get(), kCacheValue, nullptr, nullptr, nullptr, &bytes) != ERROR_SUCCESS) {
        ReportUntimed(reasons::kNoCacheRecord, entry.path.c_str());
        return Walk::Next;
    }
    // Deliberate: an empty record ends the check, and so does one that cannot be read.
    if (bytes == 0) return Walk::Stop;
    const std::unique_ptr<unsigned char[]> record(new (std::nothrow) unsigned char[bytes]);
    if (!record ||
        ::RegQueryValueExA(key.Get(), kCacheValue, nullptr, nullptr, record.get(), &bytes) != ERROR_SUCCESS)
        return Walk::Stop;
    const CachedPath cached = CacheRecordPath({record.get(), bytes});
    const std::string path = InCodePage(cached.text);
    if (path.empty() && !cached.text.empty()) return Walk::Next;  // the system could not tell it
    // The beginning of a path that is too long may name something else.
    if (!cached.isWhole || PathIsMissing(path))
        ReportUntimed(reasons::kCachedPathMissing, entry.path.c_str(), kCacheValue, path.c_str());
    return Walk::Next;
}

}  // namespace

void CheckAppPaths() { ForEachSubkey(kAppPaths, &CheckAppPath); }

void CheckUninstallEntries() { ForEachSubkey(kUninstall, &CheckProduct); }

void CheckArpCache() { ForEachSubkey(kArpCache, &CheckCacheEntry); }
