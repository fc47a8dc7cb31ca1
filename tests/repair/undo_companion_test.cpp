#include "repair/undo_companion.h"

#include <doctest/doctest.h>

#include "repair/undo_record.h"
#include "tests/repair/refused_companion.h"
#include "tests/repair/repair_bench.h"
#include "tests/support/file_text.h"
#include "tests/support/registry_tree.h"

namespace {

/// A scratch key, and an undo record whose file lies in a folder of its own.
class CCompanionBench {
public:
    [[nodiscard]] std::string KeyText(const std::string& below = "") const {
        return m_key.Path().substr(1) + below;
    }
    DWORD Export(const std::string& below = "") {
        return m_undo.Export(KeyText(below), ExportedLink::Followed);
    }
    [[nodiscard]] std::string UndoFile() const { return m_undo.FileName(); }
    [[nodiscard]] std::string Companion() const { return m_folder.Path() + "\\2009.branches"; }
    void Write(const std::string& fileName, const std::string& text) const {
        const CUniqueFile file(::CreateFileA(fileName.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                             FILE_ATTRIBUTE_NORMAL, nullptr));
        DWORD written = 0;
        REQUIRE(::WriteFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr) !=
                FALSE);
    }
    [[nodiscard]] CScratchKey& Key() { return m_key; }
    [[nodiscard]] CUndoRecord& Undo() { return m_undo; }

private:
    CScratchKey m_key;
    CScratchFolder m_folder;
    CUndoRecord m_undo{m_folder.Path() + "\\2009.reg"};
};

}  // namespace

TEST_CASE("the companion lists each exported branch once") {
    CCompanionBench bench;
    bench.Key().Add("a%");
    bench.Key().Add("b\n\xE4");
    for (const char* below : {"\\a%", "\\b\n\xE4", "\\a%"}) CHECK(bench.Export(below) == 0);
    CHECK(FileText(bench.Companion()) == bench.KeyText("\\a%25\r\n") + bench.KeyText("\\b%0A%E4\r\n"));
}

TEST_CASE("a branch that does not open is listed nowhere, and no file is made") {
    CCompanionBench bench;
    CHECK(bench.Export("\\absent") == export_errors::kKeyNotOpened);
    CHECK(bench.Undo().Export("HKLM\\x", ExportedLink::Followed) == export_errors::kUnknownRoot);
    CHECK_FALSE(Exists(bench.Companion()));
    CHECK_FALSE(Exists(bench.UndoFile()));
}

TEST_CASE("a file of another ending has no companion") {
    CCompanionBench bench;
    const CScratchFolder folder;
    CUndoRecord undo(folder.Path() + "\\undo.txt");
    CHECK(undo.Export(bench.KeyText(), ExportedLink::Followed) == 0);
    CHECK(MayReplay(undo.FileName()));
    CHECK_FALSE(Exists(folder.Path() + "\\undo.txt.branches"));
    CHECK_FALSE(Exists(folder.Path() + "\\undo.branches"));
}

TEST_CASE("a branch is listed before its export is written") {
    CCompanionBench bench;
    bench.Key().Add("a");
    CHECK(bench.Export() == 0);
    const std::string before = FileText(bench.UndoFile());
    {
        const CUniqueFile lock(
            ::CreateFileA(bench.UndoFile().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        CHECK(bench.Export("\\a") == 0);
    }
    CHECK(FileText(bench.UndoFile()) == before);
    CHECK(FileText(bench.Companion()) == bench.KeyText("\r\n") + bench.KeyText("\\a\r\n"));
}

TEST_CASE("a key whose default value is put behind an export is listed, too") {
    CCompanionBench bench;
    const HKEY below = bench.Key().Add("a");
    SetText(below, "", "text");
    CHECK(bench.Undo().RememberDefault(below, bench.KeyText("\\A")));
    CHECK(bench.Export() == 0);
    CHECK(FileText(bench.UndoFile()).ends_with("[" + bench.KeyText("\\A]\r\n@=\"text\"\r\n\r\n")));
    CHECK(FileText(bench.Companion()) == bench.KeyText("\r\n") + bench.KeyText("\\A\r\n"));
    CHECK(MayReplay(bench.UndoFile()));
}

TEST_CASE("what a companion without its undo file lists is dropped, what is beside one is kept") {
    CCompanionBench bench;
    bench.Write(bench.Companion(), "HKEY_LOCAL_MACHINE\r\n");
    CHECK(bench.Export() == 0);
    CHECK(FileText(bench.Companion()) == bench.KeyText("\r\n"));
    CUndoRecord second(bench.UndoFile());
    bench.Key().Add("a");
    CHECK(second.Export(bench.KeyText("\\a"), ExportedLink::Followed) == 0);
    CHECK(FileText(bench.Companion()) == bench.KeyText("\r\n") + bench.KeyText("\\a\r\n"));
}

TEST_CASE("an export whose companion cannot be written is written all the same, and not replayed") {
    CCompanionBench bench;
    bench.Key().Add("a");
    CHECK(bench.Export() == 0);
    {
        const CUniqueFile lock(
            ::CreateFileA(bench.Companion().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        CUndoRecord other(bench.UndoFile());
        CHECK(other.Export("HKEY_CURRENT_USER\\Environment", ExportedLink::Followed) == 0);
        CHECK_FALSE(MayReplay(bench.UndoFile()));  // a companion that cannot be read lists nothing
    }
    CHECK(FileText(bench.UndoFile()).find("[HKEY_CURRENT_USER\\Environment]") != std::string::npos);
    CHECK_FALSE(MayReplay(bench.UndoFile()));
    ::DeleteFileA(bench.Companion().c_str());
    CHECK(MayReplay(bench.UndoFile()));
}

TEST_CASE("a companion that could not be made before an export is made behind it") {
    CCompanionBench bench;
    {
        const CRefusedCompanion refused(1);
        CHECK(bench.Export() == 0);
    }
    CHECK(FileText(bench.Companion()) == bench.KeyText("\r\n"));
    CHECK(MayReplay(bench.UndoFile()));
    bench.Write(bench.UndoFile(), FileText(bench.UndoFile()) + "\r\n[HKEY_USERS\\x]\r\n\r\n");
    CHECK_FALSE(MayReplay(bench.UndoFile()));
}

TEST_CASE("a branch that could not be listed is listed with the next one, and nothing is replayed unread") {
    CCompanionBench bench;
    bench.Key().Add("a");
    const std::string foreign = "HKEY_LOCAL_MACHINE\r\n";
    for (const bool isLeftOver : {false, true}) {
        CAPTURE(isLeftOver);
        ::DeleteFileA(bench.UndoFile().c_str());
        ::DeleteFileA(bench.Companion().c_str());
        if (isLeftOver) bench.Write(bench.Companion(), foreign);
        {
            const CRefusedCompanion refused;
            CHECK(bench.Export() == 0);
            CHECK(FileText(bench.UndoFile()).find("[" + bench.KeyText("]\r\n")) != std::string::npos);
        }
        CHECK(bench.Export("\\a") == 0);
        CHECK(FileText(bench.Companion()) == bench.KeyText("\r\n") + bench.KeyText("\\a\r\n"));
        CHECK(MayReplay(bench.UndoFile()));
        bench.Write(bench.UndoFile(), FileText(bench.UndoFile()) + "\r\n[HKEY_USERS\\x]\r\n\r\n");
        CHECK_FALSE(MayReplay(bench.UndoFile()));
    }
}

TEST_CASE("a file whose companion could never be made is there to be used by hand") {
    CCompanionBench bench;
    const CRefusedCompanion refused;
    CHECK(bench.Export() == 0);
    CHECK(FileText(bench.UndoFile()).find("[" + bench.KeyText("]\r\n")) != std::string::npos);
    // Deliberate: it has no companion, and any such file is replayed as it stands.
    CHECK_FALSE(Exists(bench.Companion()));
    CHECK(MayReplay(bench.UndoFile()));
}

TEST_CASE("an undo file that is gone and made anew has its branches listed anew") {
    CCompanionBench bench;
    CHECK(bench.Export() == 0);
    ::DeleteFileA(bench.UndoFile().c_str());
    ::DeleteFileA(bench.Companion().c_str());
    CHECK(bench.Export() == 0);
    CHECK(FileText(bench.Companion()) == bench.KeyText("\r\n"));
    CHECK(MayReplay(bench.UndoFile()));
}

TEST_CASE("a companion that was changed into something else lets nothing be replayed") {
    CCompanionBench bench;
    CHECK(bench.Export() == 0);
    const std::string listed = FileText(bench.Companion());
    for (const std::string& text :
         {std::string(), std::string("\r\n"), listed + "x\n\r\n", listed.substr(0, 30)}) {
        bench.Write(bench.Companion(), text);
        CHECK_FALSE(MayReplay(bench.UndoFile()));
    }
    bench.Write(bench.Companion(), listed);
    CHECK(MayReplay(bench.UndoFile()));
    ::DeleteFileA(bench.UndoFile().c_str());
    CHECK_FALSE(MayReplay(bench.UndoFile()));  // there is nothing to read
}

TEST_CASE("letters of the system's code page are compared in any case, other characters are not") {
    CCompanionBench bench;
    const auto mayReplay = [&](const std::string& listed, const std::string& exported) {
        bench.Write(bench.Companion(), listed + "\r\n");
        bench.Write(bench.UndoFile(),
                    "Windows Registry Editor Version 5.00\r\n\r\n[" + exported + "]\r\n\r\n");
        return MayReplay(bench.UndoFile());
    };
    CHECK(mayReplay("HKEY_USERS\\%C4b",
                    "hkey_users\\\xE4"
                    "B\\c"));
    CHECK_FALSE(mayReplay("HKEY_USERS\\%C4b", "HKEY_USERS\\ab"));
    CHECK_FALSE(mayReplay("HKEY_USERS\\%DF", "HKEY_USERS\\ss"));
    CHECK_FALSE(mayReplay("HKEY_USERS\\%B5", "HKEY_USERS\\?"));
    CHECK_FALSE(mayReplay("HKEY_USERS\\ab", "HKEY_USERS\\a-b"));
}

TEST_CASE("a file of many pieces is read to its end") {
    CCompanionBench bench;
    for (int index = 0; index < 30; ++index)
        SetBytes(bench.Key().Get(), std::to_string(index), REG_BINARY, std::string(16000, 'x'));
    CHECK(bench.Export() == 0);
    CHECK(MayReplay(bench.UndoFile()));
    bench.Write(bench.UndoFile(), FileText(bench.UndoFile()) + "[HKEY_USERS\\x]\r\n");
    CHECK_FALSE(MayReplay(bench.UndoFile()));
}
