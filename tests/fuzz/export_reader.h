#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A value as an export says it.
struct ExportedValue {
    std::string name;
    std::uint32_t type;
    std::string data;

    bool operator==(const ExportedValue&) const = default;
};

/// A key line and the values below it.
struct ExportedBlock {
    std::string path;
    std::vector<ExportedValue> values;

    bool operator==(const ExportedBlock&) const = default;
};

/// Reads the text of an export the way the format is described, and not the way it is written here: quoted
/// texts go on over line ends. @return nothing for a text that is no export.
class CExportReader {
public:
    explicit CExportReader(std::string_view text) : m_text(text) {}

    std::optional<std::vector<ExportedBlock>> Read() {
        if (!Take("Windows Registry Editor Version 5.00\r\n\r\n")) return std::nullopt;
        std::vector<ExportedBlock> blocks;
        while (!m_text.empty()) {
            if (Take("\r\n")) continue;  // between two exports
            const std::size_t end = m_text.find("]\r\n");
            if (m_text.front() != '[' || end == std::string_view::npos) return std::nullopt;
            blocks.push_back({std::string(m_text.substr(1, end - 1)), {}});
            m_text.remove_prefix(end + 3);
            while (!Take("\r\n"))
                if (!ReadValue(blocks.back().values)) return std::nullopt;
        }
        return blocks;
    }

private:
    bool Take(std::string_view opening) {
        if (!m_text.starts_with(opening)) return false;
        m_text.remove_prefix(opening.size());
        return true;
    }

    bool ReadValue(std::vector<ExportedValue>& values) {
        ExportedValue value{};
        if (!Take("@") && !ReadQuoted(value.name)) return false;
        if (!Take("=") || !ReadData(value) || !Take("\r\n")) return false;
        values.push_back(std::move(value));
        return true;
    }

    bool ReadData(ExportedValue& value) {
        if (m_text.starts_with('"')) {
            value.type = 1;
            return ReadQuoted(value.data);
        }
        if (Take("dword:")) return ReadNumber(value);
        if (!Take("hex")) return false;
        value.type = 3;
        if (Take("(")) {
            value.type = TakeHex(8);
            if (!Take(")")) return false;
        }
        return Take(":") && ReadBytes(value.data);
    }

    bool ReadQuoted(std::string& text) {
        if (!Take("\"")) return false;
        while (!m_text.empty() && !Take("\"")) {
            if (!Take("\r\n")) {
                (void)Take("\\");
                if (m_text.empty()) return false;
                text += m_text.front();
                m_text.remove_prefix(1);
            } else {
                text += '\n';
            }
        }
        return true;
    }

    bool ReadNumber(ExportedValue& value) {
        value.type = 4;
        const std::uint32_t number = TakeHex(8);
        for (int shift = 0; shift < 32; shift += 8) value.data += static_cast<char>(number >> shift & 0xFF);
        return true;
    }

    bool ReadBytes(std::string& data) {
        while (!m_text.starts_with("\r\n")) {
            if (!data.empty() && !Take(",")) return false;
            (void)Take("\\\r\n  ");
            const std::size_t before = m_text.size();
            data += static_cast<char>(TakeHex(2));
            if (m_text.size() + 2 != before) return false;
        }
        return true;
    }

    std::uint32_t TakeHex(int most) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        std::uint32_t number = 0;
        for (; most > 0 && !m_text.empty(); --most) {
            const std::size_t digit = kDigits.find(m_text.front());
            if (digit == std::string_view::npos) break;
            number = number << 4 | static_cast<std::uint32_t>(digit);
            m_text.remove_prefix(1);
        }
        return number;
    }

    std::string_view m_text;
};
