#include "tests/hostile/not_returned.h"

#include <algorithm>
#include <string_view>

#include "tests/hostile/hostile_registry.h"

namespace {

using Reason = std::optional<std::string>;

// What an export does not hold.
constexpr char kTooLarge[] = "at or behind a value too large for an export";
constexpr char kLineBreak[] = "text with a line break";
constexpr char kRights[] = "rights";
constexpr char kLink[] = "a link, which comes back as a key like any other";
constexpr char kNoDefault[] = "that a key had no default value";
// What it holds in another form.
constexpr char kExpandable[] = "expandable text as plain text";
constexpr char kText[] = "text up to its first zero, in the code page, with a terminator";
constexpr char kTwin[] = "values whose names read alike, with the data of one of them";
constexpr char kLookAlike[] = "a value's name in the code page, which adds a value";
constexpr std::size_t kExportedNameBytes = 255;
constexpr std::size_t kExportedDataBytes = 16'384;

/// A counted text as a narrow call gives it, zeros included.
std::string AllNarrow(std::wstring_view text) {
    std::string narrow(2 * text.size(), '\0');
    const auto length = static_cast<int>(text.size());
    const int bytes = ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, narrow.data(),
                                            static_cast<int>(narrow.size()), nullptr, nullptr);
    narrow.resize(static_cast<std::size_t>(bytes));
    return narrow;
}

bool IsText(DWORD type) { return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ; }

std::wstring_view TextOf(const RawValue& value) {
    return {reinterpret_cast<const wchar_t*>(value.data.data()), value.data.size() / sizeof(wchar_t)};
}

/// Whether an export ends here: its buffers are too small.
bool EndsExport(const RawValue& value) {
    const std::size_t bytes = IsText(value.type) ? AllNarrow(TextOf(value)).size() : value.data.size();
    return bytes > kExportedDataBytes || AllNarrow(value.name).size() > kExportedNameBytes;
}

/// Whether an export of a key ends before all of it is written. @param value  up to which; empty: all.
bool EndsBefore(const KeyPicture& key, const std::wstring* value) {
    for (const std::wstring& name : key.order) {
        if (EndsExport(key.values.at(name))) return true;
        if (value != nullptr && name == *value) return false;
    }
    return false;
}

/// Whether data are what comes back of a value.
bool IsReplayOf(const RawValue& value, const RawValue& after) {
    if (!IsText(value.type)) return after.type == value.type && after.data == value.data;
    const std::string narrow = AllNarrow(TextOf(value));
    // The system itself may put a terminator behind a list of texts.
    if (value.type == REG_MULTI_SZ)
        return after.type == REG_MULTI_SZ &&
               (after.data == Bytes(Widen(narrow)) || after.data == Bytes(Widen(narrow) + L'\0'));
    return after.type == REG_SZ && after.data == Bytes(Widen(narrow.substr(0, narrow.find('\0'))) + L'\0');
}

/// Whether data are what comes back of another value, whose name reads alike in a narrow call.
bool IsReplayOfTwin(const KeyPicture& key, const std::wstring& name, const RawValue& after) {
    return std::ranges::any_of(key.values, [&](const auto& value) {
        return value.first != name && Narrow(value.first) == Narrow(name) && IsReplayOf(value.second, after);
    });
}

bool IsEmptied(const Change& change) {
    return change.value.empty() && change.after.type == REG_SZ && change.after.data.empty();
}

/// Where a link leads, in small letters; empty: it is none.
std::wstring TargetOf(const KeyPicture& key) {
    const auto target = key.values.find(L"symboliclinkvalue");
    if (target == key.values.end() || target->second.type != REG_LINK) return {};
    return Folded(std::wstring(TextOf(target->second)));
}

std::wstring ParentOf(const std::wstring& key) { return key.substr(0, key.rfind(L'\\')); }

}  // namespace

Reason CNotReturned::ReasonFor(const Change& change) const {
    switch (change.kind) {
        case Change::Kind::KeyGone:
            return ReasonForKeyGone(change.key);
        case Change::Kind::KeyNew:
            return ReasonForKeyNew(change.key);
        case Change::Kind::ValueGone:
            return ReasonForValueGone(change);
        case Change::Kind::ValueChanged:
            return ReasonForValueChanged(change);
        case Change::Kind::ValueNew:
            return ReasonForValueNew(change);
        case Change::Kind::RightsChanged:
            return m_before.at(change.key).isReadable ? Reason() : kRights;
    }
    return {};
}

Reason CNotReturned::ReasonForKeyGone(const std::wstring& key) const {
    const auto parent = m_before.find(ParentOf(key));
    return parent != m_before.end() && EndsBefore(parent->second, nullptr) ? Reason(kTooLarge) : Reason();
}

Reason CNotReturned::ReasonForKeyNew(const std::wstring& key) const {
    // What lies below a key that could not be read was not seen before.
    for (std::wstring above = ParentOf(key); !above.empty(); above = ParentOf(above)) {
        const auto found = m_before.find(above);
        if (found != m_before.end() && !found->second.isReadable) return kRights;
    }
    return {};
}

Reason CNotReturned::ReasonForValueGone(const Change& change) const {
    const KeyPicture& key = m_before.at(change.key);
    if (EndsBefore(key, &change.value)) return kTooLarge;
    const RawValue& value = key.values.at(change.value);
    const bool isText = value.type == REG_SZ || value.type == REG_EXPAND_SZ;
    return isText && TextOf(value).find(L'\n') != std::wstring::npos ? Reason(kLineBreak) : Reason();
}

Reason CNotReturned::ReasonForValueChanged(const Change& change) const {
    const KeyPicture& key = m_before.at(change.key);
    const RawValue& value = key.values.at(change.value);
    if (IsReplayOf(value, change.after)) return value.type == REG_EXPAND_SZ ? kExpandable : kText;
    if (EndsBefore(key, &change.value) && IsEmptied(change)) return kTooLarge;
    return IsReplayOfTwin(key, change.value, change.after) ? Reason(kTwin) : Reason();
}

Reason CNotReturned::ReasonForValueNew(const Change& change) const {
    if (!TargetOf(m_before.at(change.key)).empty()) return kLink;
    if (IsReplayOfTwin(m_before.at(change.key), change.value, change.after)) return kLookAlike;
    return IsEmptied(change) ? Reason(kNoDefault) : Reason();
}
