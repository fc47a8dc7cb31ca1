#include <doctest/doctest.h>

#include "console/interruption.h"
#include "tests/console/console_bench.h"
#include "tests/support/file_text.h"
#include "tests/support/hive_bench.h"

namespace {

using Names = std::vector<std::string>;

constexpr char kBackup[] = "2009.05.14.16.03.07";
constexpr char kNeeded[] = "A restart of the system is needed for this to take effect.\n";
constexpr char kNobody[] = "There is nobody to be asked here: use --restart never or --restart now.\n";

struct HiveBench : CConsoleBench {
    HiveBench() {
        hives.AddMachine("VellumorA");
        hives.AddMachine("VellumorB");
        actions.hiveFiles = hives.Files();
    }
    /// Makes a backup of both hives.
    static std::string AddBackup() {
        const std::string folder = CBackupsFolder::AddFolder(kBackup);
        for (const char* name : {"MACHINE.VellumorA.bck", "MACHINE.VellumorB.bck"})
            WriteFileText(folder + "\\" + name, std::string("new ") + name);
        return folder;
    }
    CBackupsFolder backups;
    CPlantedHives hives;
};

}  // namespace

TEST_CASE_FIXTURE(HiveBench, "a backup saves every hive, tells its folder, and needs no restart") {
    CHECK((Run({"backup"}) == ExitCode::Done));
    const Names folders = NamesIn(CBackupsFolder::Path());
    REQUIRE(folders.size() == 2);
    CHECK(folders[1] == "System");
    const std::string folder = CBackupsFolder::Path() + "\\" + folders[0];
    CHECK(NamesIn(folder) == Names{"MACHINE.VellumorA.bck", "MACHINE.VellumorB.bck"});
    CHECK(terminal.output == "Backup: " + folder + "\n");
    CHECK(terminal.error.empty());
    CHECK(actions.restarts == 0);
    CHECK((Run({"restore", "list"}) == ExitCode::Done));
    CHECK(terminal.output.starts_with(folders[0] + "  "));
    CHECK(LinesOf(terminal.output).size() == 1);
}

TEST_CASE_FIXTURE(HiveBench, "a backup that is not complete is a failure, and tells where it lies") {
    actions.refusedSave = 2;
    CHECK((Run({"backup", "--restart", "now"}) == ExitCode::Failed));
    const std::string folder = CBackupsFolder::Path() + "\\" + NamesIn(CBackupsFolder::Path())[0];
    CHECK(terminal.error == "A hive could not be saved; the backup is not complete: " + folder + "\n");
    CHECK(terminal.output.empty());
    CHECK(actions.restarts == 0);
}

TEST_CASE_FIXTURE(HiveBench, "a backup whose folder cannot be made saves nothing") {
    WriteFileText(CBackupsFolder::Path(), "a file in the folder's place");
    CHECK((Run({"backup"}) == ExitCode::Failed));
    CHECK(terminal.error == "The folder for the backup could not be made.\n");
    CHECK(actions.saves.empty());
    ::DeleteFileA(CBackupsFolder::Path().c_str());
}

TEST_CASE_FIXTURE(HiveBench, "a backup on a terminal tells how many hives are saved") {
    terminal.errorWidth = 80;
    CHECK((Run({"backup"}) == ExitCode::Done));
    CHECK(terminal.error.find("\r1 hives saved") != std::string::npos);
    CHECK(terminal.error.find("\r2 hives saved") != std::string::npos);
    CHECK(terminal.error.ends_with("\r"));
}

TEST_CASE_FIXTURE(HiveBench, "a restore registers the hives, and tells that a restart is needed") {
    const std::string folder = AddBackup();
    CHECK((Run({"restore", "apply", kBackup}) == ExitCode::Done));
    CHECK(terminal.output == "registered for the next start: " + folder + "\n" + kNeeded);
    CHECK(actions.replacements.size() == 2);
    CHECK(FileText(hives.FilePath("VellumorA")) == "new MACHINE.VellumorA.bck");
    CHECK(actions.restarts == 0);
}

TEST_CASE_FIXTURE(HiveBench, "the system is restarted when that is asked for, or agreed to") {
    AddBackup();
    CHECK((Run({"restore", "apply", kBackup, "--restart", "now"}) == ExitCode::Done));
    CHECK(actions.restarts == 1);
    CHECK((Run({"restore", "apply", kBackup, "--restart", "never"}) == ExitCode::Done));
    CHECK(actions.restarts == 1);
    terminal.canAsk = true;
    terminal.answer = "n";
    CHECK((Run({"restore", "apply", kBackup, "--restart", "ask"}) == ExitCode::Done));
    CHECK(terminal.error == "Restart the system now? [y/N] ");
    CHECK(actions.restarts == 1);
    terminal.answer = "y";
    CHECK((Run({"restore", "apply", kBackup, "--restart", "ask"}) == ExitCode::Done));
    CHECK(actions.restarts == 2);
    CHECK((Run({"backup", "--restart", "now"}) == ExitCode::Done));
    CHECK((Run({"compact", "--restart", "now"}) == ExitCode::Done));
    CHECK(actions.restarts == 4);
}

TEST_CASE_FIXTURE(HiveBench,
                  "what standard output refuses is told on standard error, and the restart is made") {
    const std::string folder = AddBackup();
    terminal.refusesOutput = true;
    CHECK((Run({"restore", "apply", kBackup, "--restart", "now"}) == ExitCode::Failed));
    CHECK(terminal.error == "Standard output cannot be written: registered for the next start: " + folder +
                                "\nStandard output cannot be written: " + kNeeded);
    CHECK(actions.replacements.size() == 2);
    CHECK(actions.restarts == 1);
    CHECK((Run({"compact", "--restart", "now"}) == ExitCode::Failed));
    CHECK(terminal.error == std::string("Standard output cannot be written.\n") +
                                "Standard output cannot be written: " + kNeeded);
    CHECK(actions.restarts == 2);
    CHECK((Run({"backup"}) == ExitCode::Failed));
    CHECK(terminal.error.starts_with("Standard output cannot be written: Backup: "));
    CHECK((Run({"restore", "list"}) == ExitCode::Failed));
    CHECK(terminal.error == "Standard output cannot be written.\n");
    CHECK((Run({"restore", "delete", kBackup}) == ExitCode::Failed));
    CHECK(terminal.error == std::string("Standard output cannot be written: deleted: ") + kBackup + "\n");
}

TEST_CASE_FIXTURE(HiveBench, "where nobody can be asked about the restart, nothing is begun") {
    AddBackup();
    for (const Names& line : {Names{"restore", "apply", kBackup}, {"backup"}, {"compact"}}) {
        Names asked = line;
        asked.insert(asked.end(), {"--restart", "ask"});
        CHECK((Run(asked) == ExitCode::WrongUsage));
        CHECK(terminal.error == kNobody);
    }
    CHECK(actions.replacements.empty());
    CHECK(actions.saves.empty());
}

TEST_CASE_FIXTURE(HiveBench, "a restore that fails is told by its cause, and restarts nothing") {
    const std::string folder = AddBackup();
    const Names line{"restore", "apply", kBackup, "--restart", "now"};
    actions.refusedReplacement = 1;
    CHECK((Run(line) == ExitCode::Failed));
    CHECK(terminal.error.starts_with("The system must be restarted first"));
    actions.refusedReplacement = 3;
    actions.replaceAnswer = ERROR_DISK_FULL;
    CHECK((Run(line) == ExitCode::Failed));
    CHECK(terminal.error.starts_with("A hive could not be replaced."));
    actions.refusedReplacement = 0;
    WriteFileText(folder + "\\MACHINE.VellumorNone.bck", "x");
    CHECK((Run(line) == ExitCode::Failed));
    CHECK(terminal.error.starts_with("A file of the backup is of no hive that is loaded."));
    CHECK(terminal.output.empty());
    CHECK(actions.restarts == 0);
}

TEST_CASE_FIXTURE(HiveBench, "what is no backup is neither applied nor deleted") {
    AddBackup();
    CBackupsFolder::AddFolder("System");
    for (const std::string name : {"System", "none", "..", "..\\Backup\\2009.05.14.16.03.07", ""}) {
        CAPTURE(name);
        CHECK((Run({"restore", "apply", name}) == ExitCode::Failed));
        CHECK(terminal.error == "There is no backup named " + name + ".\n");
        CHECK((Run({"restore", "delete", name}) == ExitCode::Failed));
    }
    CBackupsFolder::AddFolder("empty");
    CHECK((Run({"restore", "apply", "empty", "--restart", "now"}) == ExitCode::Failed));
    CHECK(terminal.error == "The backup holds no hive files: " + CBackupsFolder::Path() + "\\empty\n");
    CHECK(NamesIn(CBackupsFolder::Path()) == Names{kBackup, "System", "empty"});
    CHECK(actions.replacements.empty());
    CHECK(actions.restarts == 0);
}

TEST_CASE_FIXTURE(HiveBench, "the named backups are deleted with all that is in them") {
    AddBackup();
    CBackupsFolder::AddFolder("kept");
    CHECK((Run({"restore", "delete", kBackup}) == ExitCode::Done));
    CHECK(terminal.output == std::string("deleted: ") + kBackup + "\n");
    CHECK(NamesIn(CBackupsFolder::Path()) == Names{"kept"});
}

TEST_CASE_FIXTURE(HiveBench, "a compaction tells the sizes, and that a restart is needed") {
    CHECK((Run({"compact"}) == ExitCode::Done));
    const Names lines = LinesOf(terminal.output);
    REQUIRE(lines.size() == 4);
    CHECK(lines[0].starts_with("HIVE FILE"));
    CHECK(lines[1].starts_with(hives.FilePath("VellumorA") + "  "));
    CHECK(lines[2].starts_with(hives.FilePath("VellumorB") + "  "));
    CHECK(lines[3] + "\n" == kNeeded);
    CHECK(actions.restarts == 0);
}

TEST_CASE_FIXTURE(HiveBench, "a compaction that fails restarts nothing") {
    actions.refusedReplacement = 2;
    CHECK((Run({"compact", "--restart", "now"}) == ExitCode::Failed));
    CHECK(terminal.error ==
          "A hive could not be compacted. Hives before it are replaced with the next start.\n");
    CHECK(terminal.output.empty());
    CHECK(actions.restarts == 0);
}

TEST_CASE_FIXTURE(HiveBench, "Ctrl+C does not stop hives from being saved or replaced") {
    AddBackup();
    int interruptions = 0;
    actions.beforeSave = actions.beforeReplacement = [&interruptions] {
        CHECK(Interrupt());
        ++interruptions;
    };
    CHECK((Run({"backup"}) == ExitCode::Done));
    CHECK((Run({"restore", "apply", kBackup}) == ExitCode::Done));
    CHECK((Run({"compact"}) == ExitCode::Done));
    CHECK(interruptions == 2 + 2 + 4);
    CHECK_FALSE(Interrupt());
}
