#include "registry/value_reader.h"

#include <algorithm>
#include <cstring>

#include "registry/registry_access.h"

namespace {

// No path or identifier comes near this; a larger datum cannot be read, and does not take our memory either.
constexpr DWORD kLargestData = 16U << 20;

constexpr DWORD kUsualTextBytes = 260;

constexpr int kMostTries = 8;  // at a value that is larger each time

}  // namespace

CValueReader::CValueReader(DWORD nameBytes, DWORD dataBytes, TooLarge tooLarge)
    : m_name(nameBytes + 1), m_data(dataBytes + 1), m_readsData(dataBytes != 0), m_tooLarge(tooLarge) {}

LSTATUS CValueReader::Read(HKEY key, DWORD index) {
    LSTATUS result = Enumerate(key, index);
    // Another program may make the value larger between the two calls, hence the loop.
    while (result == ERROR_MORE_DATA && m_tooLarge == TooLarge::Grow && GrowFor(key))
        result = Enumerate(key, index);
    if (result != ERROR_SUCCESS) {
        m_name[0] = '\0';
        m_data[0] = '\0';
    }
    return result;
}

LSTATUS CValueReader::Enumerate(HKEY key, DWORD index) {
    std::fill(m_name.begin(), m_name.end(), '\0');
    std::fill(m_data.begin(), m_data.end(), '\0');
    auto nameBytes = static_cast<DWORD>(m_name.size() - 1);
    auto dataBytes = static_cast<DWORD>(m_data.size() - 1);
    m_type = REG_NONE;
    const LSTATUS result = ::RegEnumValueA(key, index, m_name.data(), &nameBytes, nullptr, &m_type,
                                           m_readsData ? reinterpret_cast<BYTE*>(m_data.data()) : nullptr,
                                           m_readsData ? &dataBytes : nullptr);
    // What stands before a zero byte names another value.
    const bool isHidden = result == ERROR_SUCCESS && std::strlen(m_name.data()) != nameBytes;
    return isHidden ? ERROR_INVALID_NAME : result;
}

bool CValueReader::GrowFor(HKEY key) {
    DWORD longestName = 0;  // characters
    DWORD largestData = 0;  // bytes
    if (::RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &longestName,
                           &largestData, nullptr, nullptr) != ERROR_SUCCESS)
        return false;
    if (largestData > kLargestData) return false;
    // The sizes are those of the stored UTF-16; a character of it takes up to three bytes in a code page.
    const std::size_t name = std::max<std::size_t>(m_name.size(), 3 * std::size_t{longestName} + 2);
    const std::size_t data = std::max<std::size_t>(m_data.size(), std::size_t{largestData} * 3 / 2 + 2);
    if (name == m_name.size() && data == m_data.size()) return false;
    m_hasGrown = true;
    m_name.resize(name);
    if (m_readsData) m_data.resize(data);
    return true;
}

QueriedText QueryText(HKEY key, const char* name, DWORD bytes) {
    std::vector<char> data(bytes + 1);
    QueriedText query{ERROR_SUCCESS, REG_NONE, {}};
    query.result =
        ::RegQueryValueExA(key, name, nullptr, &query.type, reinterpret_cast<BYTE*>(data.data()), &bytes);
    if (query.Succeeded()) query.text = data.data();
    return query;
}

QueriedText QueryWholeText(HKEY key, const char* name) {
    // Nearly every text fits, so its size is asked for only where it does not.
    QueriedText query = QueryText(key, name, kUsualTextBytes);
    // Another program may make the value larger between the two calls, hence the loop.
    for (int tries = 0; query.result == ERROR_MORE_DATA && tries < kMostTries; ++tries) {
        DWORD bytes = 0;
        const LSTATUS sized = ::RegQueryValueExA(key, name, nullptr, nullptr, nullptr, &bytes);
        if (sized != ERROR_SUCCESS) return {sized, REG_NONE, {}};
        if (bytes > kLargestData) return {ERROR_MORE_DATA, REG_NONE, {}};
        query = QueryText(key, name, bytes);
    }
    return query;
}

LSTATUS FindValueNamed(HKEY key, const char* name, CancelPoll poll) {
    CValueReader values(kNameBytes, 0);
    CWalkEnd end(CWalkEnd::Of::Values);
    for (DWORD index = 0;; ++index) {
        poll();
        const LSTATUS result = values.Read(key, index);
        if (result == ERROR_NO_MORE_ITEMS) return ERROR_FILE_NOT_FOUND;
        if (end.IsReached(key, index, result)) return result;
        if (result == ERROR_SUCCESS && std::strcmp(values.Name(), name) == 0) return ERROR_SUCCESS;
    }
}

QueriedText QueryTextExactly(HKEY key, const char* name, DWORD bytes, CancelPoll poll) {
    const LSTATUS found = FindValueNamed(key, name, poll);
    if (found != ERROR_SUCCESS) return {found, REG_NONE, {}};
    return QueryText(key, name, bytes);
}

bool HasNoSubkeys(HKEY key) {
    char name[kNameBytes + 1];
    return EnumSubkey(key, 0, name) == ERROR_NO_MORE_ITEMS;
}

bool HasNoValues(HKEY key) {
    CValueReader values(kNameBytes, 0);
    return values.Read(key, 0) == ERROR_NO_MORE_ITEMS;
}

bool HoldsNothing(HKEY key) { return HasNoSubkeys(key) && HasNoValues(key); }
