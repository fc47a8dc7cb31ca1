#include "area_cases.h"

#include <doctest/doctest.h>

#include <utility>

#include "tests/support/native_calls.h"

namespace {

std::string Numbered(std::string text, char number) {
    for (char& letter : text)
        if (letter == '#') letter = number;
    return text;
}

struct PlantedCase {
    explicit PlantedCase(const AreaCase& planted)
        : entries(planted), area(registry, planted.root, planted.area) {
        for (const char number : {'1', '2'})
            area.Add(Numbered(planted.entry, number), Numbered(planted.name, number),
                     Numbered(planted.text, number));
    }

    [[nodiscard]] std::string Rows(char number) const {
        const std::string line = entries.timed ? area.Timed(Numbered(entries.entry, number), Shown(number),
                                                            Numbered(entries.shownText, number))
                                               : area.Untimed(Numbered(entries.entry, number), Shown(number),
                                                              Numbered(entries.shownText, number));
        std::string rows;
        for (int row = 0; row < entries.rows; ++row) rows += line + "\n";
        return rows;
    }
    [[nodiscard]] std::string Shown(char number) const { return Numbered(entries.shownName, number); }

    const AreaCase& entries;
    CScratchRegistry registry;
    CScratchArea area;
};

bool HasSubkeyEntries(const AreaCase& planted) { return planted.entry[0] != '\0'; }

}  // namespace

CScratchArea::CScratchArea(CScratchRegistry& registry, HKEY root, std::string area)
    : m_registry(registry), m_root(root), m_area(std::move(area)) {
    (void)Key();
}

HKEY CScratchArea::Key(const std::string& below) {
    return m_registry.Add(m_root, below.empty() ? m_area : m_area + "\\" + below);
}

void CScratchArea::Add(const std::string& below, const std::string& name, const std::string& text,
                       DWORD type) {
    SetText(Key(below), name, text, type);
}

std::string CScratchArea::Path(const std::string& below) const {
    const char* root = m_root == HKEY_LOCAL_MACHINE ? "\\HKEY_LOCAL_MACHINE\\" : "\\HKEY_CURRENT_USER\\";
    return root + m_area + (below.empty() ? "" : "\\" + below);
}

std::string CScratchArea::Timed(const std::string& below, const std::string& name,
                                const std::string& data) const {
    return Path(below) + "|timed|" + name + "|" + data;
}

std::string CScratchArea::Untimed(const std::string& below, const std::string& name,
                                  const std::string& data) const {
    return Path(below) + "||" + name + "|" + data;
}

void DemandRowsAndProgress(const AreaCase& planted) {
    CAPTURE(planted.area);
    const PlantedCase entries(planted);
    CRecordingView view;
    const WorkerEnd end = view.Run(planted.check);
    CHECK(end.inTime);
    CHECK_FALSE(end.canceled);
    CHECK(view.Count(kCanceledMessage) == 0);
    CHECK(RowLines(view) == entries.Rows('1') + entries.Rows('2'));
    if (HasSubkeyEntries(planted)) {
        for (const char number : {'1', '2'})
            CHECK(view.ProgressOf(entries.area.Path(Numbered(planted.entry, number))) == 1);
    } else {
        CHECK(view.ProgressOf(entries.area.Path()) == 1);
    }
}

void DemandNothingWithoutAccess(const AreaCase& planted) {
    CAPTURE(planted.area);
    PlantedCase entries(planted);
    entries.registry.MakeReadOnly(entries.area.Key());
    CHECK(RowsOf(planted.check).empty());
}

void DemandClosedEntryPassedOver(const AreaCase& planted) {
    if (!HasSubkeyEntries(planted)) return;
    CAPTURE(planted.area);
    {
        PlantedCase entries(planted);
        entries.registry.MakeReadOnly(entries.area.Key(Numbered(planted.entry, '1')));
        CHECK(RowsOf(planted.check) == entries.Rows('2'));
    }
    PlantedCase entries(planted);
    entries.registry.Lock(entries.area.Key(Numbered(planted.entry, '1')));
    CHECK(RowsOf(planted.check) == entries.Rows('2'));
}

void DemandEndWhenCanceled(const AreaCase& planted) {
    CAPTURE(planted.area);
    const PlantedCase entries(planted);
    DemandNothingAfterCancel(planted.check);
    CHECK(RowsWhenCanceledAtFirstRow(planted.check) == entries.Rows('1'));
}

void DemandEverythingClosed(const AreaCase& planted) {
    CAPTURE(planted.area);
    const PlantedCase entries(planted);
    CRecordingView view;
    std::size_t before = 0;
    for (int round = 0; round < 6; ++round) {
        if (round == 2) before = OwnHandles().size();  // by then the system has what it keeps for itself
        view.onEvent = [&view, round](const ViewEvent& event) {
            if (round % 2 == 1 && event.message == kRowMessage) view.Cancel();
        };
        view.Uncancel();
        CHECK(view.Run(planted.check).canceled == (round % 2 == 1));
    }
    CHECK(OwnHandles().size() == before);
}
