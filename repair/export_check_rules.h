#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "repair/branch_list_rules.h"

/// What is left of a line while it is read. Of the last line of a text that ends early, everything may be
/// missing from some place on: there, whatever is asked for counts as found.
class CLineRest {
public:
    CLineRest(std::string_view text, bool isCut) : m_text(text), m_isCut(isCut) {}

    [[nodiscard]] std::string_view Text() const { return m_text; }
    [[nodiscard]] bool IsCut() const { return m_isCut; }
    /// Takes an opening off, or what is left of it.
    [[nodiscard]] bool Take(std::string_view opening);
    /// Takes so many lower-case hexadecimal digits off.
    [[nodiscard]] bool TakeHexDigits(std::size_t count);
    /// Takes a quoted text off, up to its closing quote or the end of the line.
    /// @param isClosed  whether the quote has been reached and taken.
    /// @return false when a backslash stands before anything but a quote or another one.
    [[nodiscard]] bool TakeQuoted(bool& isClosed);

private:
    std::string_view m_text;
    bool m_isCut;
};

/// Reads the text of an undo file before the registry editor does, and tells whether it is what exports of
/// listed branches write. Names of keys are written raw, and so are line breaks in names and data, so a
/// hostile name can come out as lines of its own, which the editor would obey with an administrator's rights.
///
/// Some readers of the format take each line by itself, others let a quoted text go on over line ends. The
/// text has to be harmless to both: a carriage return alone, too, counts as the end of a line, and within a
/// quoted text no line may look like a key line or a value.
class CExportCheck {
public:
    /// @param branches  borrowed.
    explicit CExportCheck(const CBranchList& branches) : m_branches(branches) {}

    /// Takes the next piece of the text, of any size.
    void Feed(std::string_view piece);
    /// Call behind the last piece. A text that ends early, as on a full disk, counts for what it is.
    /// @return whether all of it may be replayed.
    [[nodiscard]] bool Finish();

private:
    enum class Ending { LineFeed, CarriageReturn, None };  // the line feed with its carriage return in front
    enum class Inside { Nothing, Name, Data, Hex };        // what a line begins in

    void TakeByte(char byte);
    void EndLine(Ending ending);
    [[nodiscard]] bool LineIsTrue(CLineRest line);
    [[nodiscard]] bool FreshLineIsTrue(CLineRest line);
    [[nodiscard]] bool KeyLineIsTrue(std::string_view line, bool isCut);
    [[nodiscard]] bool NameIsTrue(CLineRest rest);
    [[nodiscard]] bool DataAreTrue(CLineRest rest);
    [[nodiscard]] bool TextIsTrue(CLineRest rest);
    [[nodiscard]] bool HexIsTrue(CLineRest rest);

    const CBranchList& m_branches;
    bool m_isTrue = true;
    bool m_afterReturn = false;  // the byte before was a carriage return, whose line has not ended yet
    bool m_inBlock = false;      // behind a key line, before the blank line that closes its block
    int m_headerLines = 0;       // of those that have been read
    Inside m_inside = Inside::Nothing;
    std::string m_line;
};
