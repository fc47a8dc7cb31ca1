#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// Where export text goes, block by block.
class CByteSink {
public:
    virtual ~CByteSink() = default;
    /// @return whether all bytes were taken.
    [[nodiscard]] virtual bool Write(const char* bytes, std::size_t count) = 0;
};

/// Value types as the registry numbers them, of which the export text has forms of its own.
namespace export_types {

inline constexpr std::uint32_t kText = 1;        // REG_SZ
inline constexpr std::uint32_t kExpandText = 2;  // REG_EXPAND_SZ
inline constexpr std::uint32_t kBinary = 3;      // REG_BINARY
inline constexpr std::uint32_t kNumber = 4;      // REG_DWORD

}  // namespace export_types

/// Writes the text that the registry editor imports: its export format, version 5.00, one byte per character,
/// lines ended by CR LF. Gathers the text and hands it on in blocks.
class CExportText {
public:
    /// @param sink  borrowed.
    explicit CExportText(CByteSink& sink) : m_sink(sink) {}
    CExportText(const CExportText&) = delete;
    CExportText& operator=(const CExportText&) = delete;

    /// What stands once, at the top of a file.
    void WriteHeader();
    /// Opens a key's block. @param path  the key's whole path, root name first.
    void WriteKeyLine(std::string_view path);
    /// One value on a line of its own. Text data count up to their first zero byte. Expandable text comes out
    /// as plain text, so that a replay restores it as such.
    /// @param name  empty for the default value.
    void WriteValue(std::string_view name, std::uint32_t type, std::span<const unsigned char> data);
    /// The blank line behind a key's block, and between two exports into one file.
    void WriteBlankLine() { PutByte('\n'); }

    void WriteLiteral(std::string_view text);
    /// The text between double quotes; double quotes and backslashes in it get a backslash in front. Nothing
    /// else is escaped.
    void WriteQuoted(std::string_view text);
    /// Hexadecimal bytes with commas between them, led by "hex:", or by "hex(N):" for every other type than
    /// binary; broken into lines of at most 80 columns.
    void WriteHexData(std::span<const unsigned char> bytes, std::uint32_t type);
    /// Eight lower-case hexadecimal digits, or as few as the value needs.
    void WriteHexNumber(std::uint32_t value, bool keepLeadingZeros);
    /// Every line feed, one inside of data too, comes out as carriage return and line feed.
    void PutByte(char byte);
    /// Hands on what has been gathered. What the sink refuses is kept and offered again by the next flush;
    /// bytes that find no room meanwhile are dropped.
    void FlushOutput();

private:
    void Store(char byte);

    static constexpr std::size_t kBufferBytes = 4096;

    CByteSink& m_sink;
    char m_buffer[kBufferBytes];
    std::uint32_t m_fillCount = 0;
    std::int32_t m_column = 0;  // bytes since the last line feed
};
