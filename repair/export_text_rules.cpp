#include "repair/export_text_rules.h"

namespace {

constexpr char kHexDigits[] = "0123456789abcdef";
constexpr std::int32_t kBreakColumn = 76;

std::string_view UpToZero(std::span<const unsigned char> data) {
    const std::string_view text(reinterpret_cast<const char*>(data.data()), data.size());
    return text.substr(0, text.find('\0'));
}

/// The number as the registry stores it, least significant byte first.
std::uint32_t NumberFrom(std::span<const unsigned char> bytes) {
    std::uint32_t value = 0;
    for (std::size_t place = bytes.size(); place > 0; --place) value = value << 8 | bytes[place - 1];
    return value;
}

}  // namespace

void CExportText::WriteHeader() { WriteLiteral("Windows Registry Editor Version 5.00\n\n"); }

void CExportText::WriteKeyLine(std::string_view path) {
    PutByte('[');
    WriteLiteral(path);
    WriteLiteral("]\n");
}

void CExportText::WriteValue(std::string_view name, std::uint32_t type, std::span<const unsigned char> data) {
    if (name.empty()) {
        PutByte('@');
    } else {
        WriteQuoted(name);
    }
    PutByte('=');
    if (type == export_types::kText || type == export_types::kExpandText) {
        WriteQuoted(UpToZero(data));
    } else if (type == export_types::kNumber && data.size() == sizeof(std::uint32_t)) {
        WriteLiteral("dword:");
        WriteHexNumber(NumberFrom(data), true);
    } else {
        WriteHexData(data, type);
    }
    PutByte('\n');
}

void CExportText::WriteLiteral(std::string_view text) {
    for (const char byte : text) PutByte(byte);
}

void CExportText::WriteQuoted(std::string_view text) {
    PutByte('"');
    for (const char byte : text) {
        if (byte == '"' || byte == '\\') PutByte('\\');
        PutByte(byte);
    }
    PutByte('"');
}

void CExportText::WriteHexData(std::span<const unsigned char> bytes, std::uint32_t type) {
    WriteLiteral("hex");
    if (type != export_types::kBinary) {
        PutByte('(');
        WriteHexNumber(type, false);
        PutByte(')');
    }
    PutByte(':');
    bool isFirstOnLine = true;
    for (const unsigned char byte : bytes) {
        if (!isFirstOnLine && m_column >= kBreakColumn) {
            WriteLiteral(",\\\n  ");
            isFirstOnLine = true;
        }
        if (!isFirstOnLine) PutByte(',');
        PutByte(kHexDigits[byte >> 4]);
        PutByte(kHexDigits[byte & 0xF]);
        isFirstOnLine = false;
    }
}

void CExportText::WriteHexNumber(std::uint32_t value, bool keepLeadingZeros) {
    bool writes = keepLeadingZeros;
    for (int shift = 28; shift >= 0; shift -= 4) {
        const std::uint32_t digit = value >> shift & 0xF;
        writes = writes || digit != 0 || shift == 0;
        if (writes) PutByte(kHexDigits[digit]);
    }
}

void CExportText::PutByte(char byte) {
    if (byte == '\n') {
        Store('\r');
        m_column = 0;
    } else {
        ++m_column;
    }
    Store(byte);
}

void CExportText::Store(char byte) {
    if (m_fillCount == kBufferBytes) return;  // the last flush failed
    m_buffer[m_fillCount++] = byte;
    if (m_fillCount == kBufferBytes) FlushOutput();
}

void CExportText::FlushOutput() {
    if (m_fillCount == 0) return;
    if (m_sink.Write(m_buffer, m_fillCount)) m_fillCount = 0;
}
