#include "console/csv_rules.h"

namespace {

std::string Field(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string field = "\"";
    for (const char c : text) {
        if (c == '"') field += '"';
        field += c;
    }
    return field += '"';
}

/// What is left of a text that is taken apart from its front.
class CCsvReader {
public:
    explicit CCsvReader(std::string_view text) : m_rest(text) {}

    [[nodiscard]] bool IsAtEnd() const { return m_rest.empty(); }

    /// The next field; nothing when it is not well-formed.
    [[nodiscard]] std::optional<std::string> TakeField() {
        if (!m_rest.starts_with('"')) return std::string(Take(m_rest.find_first_of(",\r\n")));
        m_rest.remove_prefix(1);
        std::string field;
        for (;;) {
            const std::size_t quote = m_rest.find('"');
            if (quote == std::string_view::npos) return std::nullopt;
            field += Take(quote);
            m_rest.remove_prefix(1);
            if (!m_rest.starts_with('"')) break;
            field += '"';
            m_rest.remove_prefix(1);
        }
        const bool ends = m_rest.empty() || m_rest.find_first_of(",\r\n") == 0;
        return ends ? std::optional(field) : std::nullopt;
    }

    /// Takes the comma behind a field. @return false at the end of the line, which is taken.
    bool TakeComma() {
        if (m_rest.starts_with(',')) {
            m_rest.remove_prefix(1);
            return true;
        }
        if (m_rest.starts_with('\r')) m_rest.remove_prefix(1);
        if (m_rest.starts_with('\n')) m_rest.remove_prefix(1);
        return false;
    }

private:
    std::string_view Take(std::size_t count) {
        const std::string_view taken = m_rest.substr(0, count);
        m_rest.remove_prefix(taken.size());
        return taken;
    }

    std::string_view m_rest;
};

}  // namespace

std::string CsvLine(std::span<const std::string> fields) {
    std::string line;
    for (const std::string& field : fields) {
        if (&field != fields.data()) line += ',';
        line += Field(field);
    }
    return line += "\r\n";
}

std::optional<std::vector<std::vector<std::string>>> ParseCsv(std::string_view text) {
    std::vector<std::vector<std::string>> lines;
    CCsvReader reader(text);
    while (!reader.IsAtEnd()) {
        std::vector<std::string>& line = lines.emplace_back();
        do {
            std::optional<std::string> field = reader.TakeField();
            if (!field.has_value()) return std::nullopt;
            line.push_back(std::move(*field));
        } while (reader.TakeComma());
    }
    return lines;
}
