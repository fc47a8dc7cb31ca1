#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "registry/key_tree.h"

/// What becomes of a value whose name or data is larger than the buffers that it is read into.
enum class TooLarge {
    Skip,  // the call fails, and the caller passes the index over
    Grow,  // the buffers grow, and it is read whole
};

/// Reads a key's values one after another into buffers of its own. Data of any type are taken as text, up to
/// the first zero byte.
class CValueReader {
public:
    /// @param nameBytes  size of the name buffer, terminator included.
    /// @param dataBytes  size of the data buffer; 0: names alone are read, and no data can be too large.
    CValueReader(DWORD nameBytes, DWORD dataBytes, TooLarge tooLarge = TooLarge::Skip);

    /// Reads the value of an index. After a failure name and data are empty.
    /// @return the system's code: ERROR_NO_MORE_ITEMS behind the last value; ERROR_INVALID_NAME for one whose
    /// name holds a zero byte, by which no call would find it.
    [[nodiscard]] LSTATUS Read(HKEY key, DWORD index);

    [[nodiscard]] const char* Name() const { return m_name.data(); }
    [[nodiscard]] const char* Data() const { return m_data.data(); }
    [[nodiscard]] DWORD Type() const { return m_type; }
    [[nodiscard]] bool HasName() const { return m_name[0] != '\0'; }
    [[nodiscard]] bool HasData() const { return m_data[0] != '\0'; }
    /// Whether a value was larger than the buffers were at first.
    [[nodiscard]] bool HasGrown() const { return m_hasGrown; }

private:
    [[nodiscard]] LSTATUS Enumerate(HKEY key, DWORD index);
    [[nodiscard]] bool GrowFor(HKEY key);

    // One byte more than the calls are told of, always zero: data may come without a terminator.
    std::vector<char> m_name;
    std::vector<char> m_data;
    DWORD m_type = REG_NONE;
    bool m_readsData;
    bool m_hasGrown = false;
    TooLarge m_tooLarge;
};

/// The answer of a query for one value.
struct QueriedText {
    LSTATUS result;    // the system's code
    DWORD type;        // REG_..., where the value was read
    std::string text;  // up to the first zero byte; empty where it was not read

    [[nodiscard]] bool Succeeded() const { return result == ERROR_SUCCESS; }
    [[nodiscard]] bool IsAbsent() const { return result == ERROR_FILE_NOT_FOUND; }
};

/// Queries one value as text into a buffer of the given size; larger data fail with ERROR_MORE_DATA.
/// @param name  "" for the default value.
[[nodiscard]] QueriedText QueryText(HKEY key, const char* name, DWORD bytes);

/// The same, whatever the size of the data.
[[nodiscard]] QueriedText QueryWholeText(HKEY key, const char* name);

/// Looks for a value whose name is spelled just so, letter case included.
/// @param poll  runs before each value.
/// @return ERROR_SUCCESS; ERROR_FILE_NOT_FOUND when the walk came to its end without it; otherwise what ended
/// the walk.
[[nodiscard]] LSTATUS FindValueNamed(HKEY key, const char* name, CancelPoll poll);

/// The same as QueryText, but the name must be spelled as it is stored: one that differs in letter case is
/// absent.
[[nodiscard]] QueriedText QueryTextExactly(HKEY key, const char* name, DWORD bytes, CancelPoll poll);

/// Whether a key has no subkey, or no value, or neither: the first enumeration finds nothing.
[[nodiscard]] bool HasNoSubkeys(HKEY key);
[[nodiscard]] bool HasNoValues(HKEY key);
[[nodiscard]] bool HoldsNothing(HKEY key);
