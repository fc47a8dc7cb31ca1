// Writes keys and values of any names and data as an export, reads the text back with another reader, and
// compares; then has the check that stands before a replay judge it.
#include <algorithm>

#include "repair/export_check_rules.h"
#include "repair/export_text_rules.h"
#include "tests/fuzz/export_reader.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/fuzz/replay_lines.h"
#include "tests/rules/memory_sink.h"

namespace {

constexpr std::size_t kNone = std::string_view::npos;

std::string Same(std::string_view text) { return std::string(text); }

bool IsText(std::uint32_t type) { return type == export_types::kText || type == export_types::kExpandText; }

std::uint32_t TypeFrom(CFuzzInput& input) {
    const std::uint32_t low = input.TakeByte();
    return low < 0xF0 ? low % 16 : low << 24 | input.TakeByte();
}

ExportedBlock TakeBlock(CFuzzInput& input) {
    ExportedBlock block{"HKEY_USERS\\" + input.TakeText(300), {}};
    for (int count = input.TakeByte() % 8; count > 0; --count) {
        std::string name = input.TakeText(255);
        const std::uint32_t type = TypeFrom(input);
        const std::size_t size = input.TakeByte() + std::size_t{input.TakeByte()} % 2 * 300;
        const std::string data(input.Rest().substr(0, size));
        for (std::size_t taken = 0; taken < data.size(); ++taken) (void)input.TakeByte();
        block.values.push_back({std::move(name), type, data});
    }
    return block;
}

void Write(CExportText& text, const ExportedBlock& block) {
    text.WriteKeyLine(block.path);
    for (const ExportedValue& value : block.values)
        text.WriteValue(value.name, value.type,
                        {reinterpret_cast<const unsigned char*>(value.data.data()), value.data.size()});
    text.WriteBlankLine();
}

/// What is to be read back: text is plain and ends at its first zero.
ExportedBlock AsRead(ExportedBlock block) {
    for (ExportedValue& value : block.values) {
        if (!IsText(value.type)) continue;
        value.type = export_types::kText;
        value.data.resize(std::min(value.data.size(), value.data.find('\0')));
    }
    return block;
}

std::string_view WithoutBlanks(std::string_view line) {
    while (!line.empty() && (static_cast<unsigned char>(line.front()) <= ' ' || line.front() == '\xA0'))
        line.remove_prefix(1);
    return line;
}

/// Whether a line of a text but its first one looks like a key line or a default value.
bool HoldsOrder(std::string_view text) {
    for (std::size_t end = text.find_first_of("\r\n"); end != kNone; end = text.find_first_of("\r\n")) {
        text.remove_prefix(end + 1);
        const std::string_view line = WithoutBlanks(text.substr(0, text.find_first_of("\r\n")));
        if (line.starts_with('[')) return true;
        if (line.starts_with('@') && WithoutBlanks(line.substr(1)).starts_with('=')) return true;
    }
    return false;
}

bool EndsInBlankLine(std::string_view name) {
    const std::size_t last = name.find_last_of("\r\n");
    return last != kNone && WithoutBlanks(name.substr(last)).empty();
}

bool ValueMayReplay(const ExportedValue& value) {
    return !HoldsOrder(value.name) && !EndsInBlankLine(value.name) &&
           !(IsText(value.type) && HoldsOrder(value.data));
}

void CheckReplay(const std::vector<ExportedBlock>& read, std::string_view text) {
    CBranchList branches(Same);
    bool mayReplay = true;
    for (const ExportedBlock& block : read) {
        Require(branches.Read(BranchLine(block.path)), "a companion is read");
        mayReplay = mayReplay && std::ranges::all_of(block.values, ValueMayReplay);
    }
    CExportCheck check(branches);
    check.Feed(text);
    Require(check.Finish() == mayReplay, "an export may be replayed unless one of its lines is an order");
    if (!mayReplay || read.empty()) return;
    const CBranchList none(Same);
    CExportCheck foreign(none);
    foreign.Feed(text);
    Require(!foreign.Finish(), "a key of no branch is not replayed");
}

/// The branch whose export a block is part of: the key itself, or, where names with line breaks lead to it,
/// the one above these.
std::string_view BranchOf(const ExportedBlock& block) {
    const std::string_view path = block.path;
    const std::size_t lineBreak = path.find_first_of("\r\n");
    return lineBreak == kNone ? path : path.substr(0, path.rfind('\\', lineBreak));
}

/// Requires of an export with hostile key names that, if it may be replayed, it stays in its branches.
void CheckHostileReplay(const std::vector<ExportedBlock>& blocks, std::string_view text) {
    CBranchList branches(Same);
    for (const ExportedBlock& block : blocks)
        Require(branches.Read(BranchLine(BranchOf(block))), "a companion is read");
    CExportCheck check(branches);
    check.Feed(text);
    if (!check.Finish()) return;
    RequireHarmlessLines(text, [&blocks](std::string_view path) {
        return std::ranges::any_of(
            blocks, [path](const ExportedBlock& block) { return LiesIn(BranchOf(block), path); });
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    CFuzzInput input(bytes, size);
    CMemorySink sink;
    CExportText text(sink);
    std::vector<ExportedBlock> expected;
    text.WriteHeader();
    bool breaksLine = false;
    while (!input.Rest().empty() && expected.size() < 16) {
        const bool isNewExport = input.TakeByte() % 2 == 0;
        const ExportedBlock block = TakeBlock(input);
        if (isNewExport && !expected.empty()) text.WriteBlankLine();
        Write(text, block);
        expected.push_back(AsRead(block));
        breaksLine = breaksLine || block.path.find_first_of("\r\n") != kNone;
    }
    text.FlushOutput();
    const std::string written = sink.Text();
    Require(std::ranges::all_of(sink.blocks, [](const std::string& block) { return block.size() <= 4096; }),
            "text is handed on in blocks");
    Require(written.find('\0') == kNone, "no zero is written");
    CheckHostileReplay(expected, written);
    // A key name with a line break does not come back.
    if (breaksLine) return 0;
    const std::optional<std::vector<ExportedBlock>> read = CExportReader(written).Read();
    Require(read.has_value(), "an export is read");
    Require(*read == expected, "what is read is what was written");
    CheckReplay(expected, written);
    return 0;
}
