#include "console/console.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <span>

#include "console/check_selection.h"
#include "console/code_page.h"
#include "console/commands.h"
#include "platform/text.h"
#include "platform/version.h"
#include "resources/resource.h"

namespace {

using Names = std::vector<std::string>;

std::string VersionText() { return VersionLine(LoadText(IDS_APP_TITLE)); }

/// A command line taken apart, and what it asks for.
class CCommandLine {
public:
    explicit CCommandLine(CTerminal& terminal) : m_terminal(terminal) {
        m_app.require_subcommand(1);
        m_app.set_version_flag("--version", VersionText());
        m_app.footer(kExitCodes);
        AddAnalyze();
        AddClean();
        AddUndo();
        AddBackup();
        AddRestore();
        AddCompact();
        CLI::App* checks = m_app.add_subcommand("checks", "List the checks: name, area, what they find");
        Run(checks, [this] { return RunChecks(m_terminal); });
    }
    CCommandLine(const CCommandLine&) = delete;
    CCommandLine& operator=(const CCommandLine&) = delete;

    ExitCode Parse(int count, const char* const* arguments) {
        try {
            RefuseLists(std::span(arguments, static_cast<std::size_t>(count)));
            m_app.parse(count, arguments);
        } catch (const CLI::CallForHelp&) {
            return Print(m_app.help());
        } catch (const CLI::CallForVersion&) {
            return Print(VersionText() + "\n");
        } catch (const CLI::ParseError& error) {
            WriteErrorLine(m_terminal, ToUtf8(error.what()));
            WriteErrorLine(m_terminal, "Run with --help for more information.");
            return ExitCode::WrongUsage;
        }
        return m_command();
    }

private:
    static constexpr char kExitCodes[] =
        "Exit codes: 0 done, and nothing found; 1 rows found; 2 wrong usage; 3 failed;\n"
        "4 rights missing; 130 canceled.";

    /// The parser takes "[a,b]" for a list of names and drops the brackets, so that another thing would be
    /// named than the one in brackets.
    static void RefuseLists(std::span<const char* const> arguments) {
        for (std::string_view argument : arguments) {
            const std::size_t equals = argument.starts_with("--") ? argument.find('=') : std::string::npos;
            if (equals != std::string::npos) argument.remove_prefix(equals + 1);
            if (argument.starts_with('[') && argument.ends_with(']'))
                throw CLI::ValidationError(
                    std::string(argument),
                    "a value that stands in square brackets as a whole cannot be given");
        }
    }

    ExitCode Print(const std::string& text) {
        return WriteOutputText(m_terminal, ToUtf8(text)) ? ExitCode::Done : ExitCode::Failed;
    }

    void Run(CLI::App* command, std::function<ExitCode()> run) {
        command->callback([this, run = std::move(run)] { m_command = run; });
    }

    static void AddChoice(CLI::App* command, RowChoice& choice) {
        const auto isCheck = [](const std::string& name) {
            return IsCheck(name) ? std::string()
                                 : "no check is named " + name + "; the command \"checks\" lists them";
        };
        command->add_option("--only", choice.only, "Names of the checks that run")
            ->delimiter(',')
            ->check(isCheck)
            ->type_name("CHECK");
        command->add_option("--skip", choice.skip, "Names of checks that do not run")
            ->delimiter(',')
            ->check(isCheck)
            ->type_name("CHECK");
        command->add_option("--match", choice.match, "Only rows whose key is of this pattern (* and ?)")
            ->type_name("GLOB");
        command->add_option("--exclude", choice.exclude, "No rows whose key is of one of these patterns")
            ->type_name("GLOB");
    }

    void AddAnalyze() {
        CLI::App* analyze = m_app.add_subcommand("analyze", "Find invalid entries; nothing is changed");
        analyze->add_option("--format", m_format, "How rows are written: text, csv, json or jsonl")
            ->check(CLI::IsMember({"text", "csv", "json", "jsonl"}))
            ->type_name("FORMAT");
        analyze->add_option("--output", m_analyze.output, "Write rows to this file")->type_name("FILE");
        AddChoice(analyze, m_analyze.choice);
        Run(analyze, [this] {
            if (m_format == "csv") m_analyze.format = RowFormat::Csv;
            if (m_format == "json") m_analyze.format = RowFormat::Json;
            if (m_format == "jsonl") m_analyze.format = RowFormat::JsonLines;
            return RunAnalyze(m_terminal, m_analyze);
        });
    }

    void AddClean() {
        CLI::App* clean = m_app.add_subcommand("clean", "Clean rows that an analysis has found");
        CLI::Option* rows =
            clean->add_option("--rows", m_clean.rows, "Rows as analyze wrote them; - is standard input")
                ->type_name("FILE");
        CLI::Option* all = clean->add_flag("--all", m_all, "All rows of an analysis made now");
        rows->excludes(all);
        clean->add_flag("--dry-run", m_clean.dryRun, "Tell what would be done, and change nothing");
        clean->add_flag("--yes", m_clean.yes, "Do not ask");
        AddChoice(clean, m_clean.choice);
        for (const char* name : {"--only", "--skip", "--match", "--exclude"})
            clean->get_option(name)->needs(all);
        clean->callback([this] {
            if (m_clean.rows.empty() && !m_all) throw CLI::RequiredError("--rows or --all");
            m_command = [this] { return RunClean(m_terminal, m_clean); };
        });
    }

    void AddUndo() {
        CLI::App* undo = m_app.add_subcommand("undo", "Undo files of former cleanings");
        undo->require_subcommand(1);
        Run(undo->add_subcommand("list", "List them"), [this] { return RunUndoList(m_terminal); });
        CLI::App* replay = undo->add_subcommand("replay", "Write back what one of them holds");
        replay->add_option("name", m_name, "As in the list")->required();
        Run(replay, [this] { return RunUndoReplay(m_terminal, m_name); });
        CLI::App* remove = undo->add_subcommand("delete", "Delete some of them");
        remove->add_option("name", m_names, "As in the list")->required();
        Run(remove, [this] { return RunUndoDelete(m_terminal, m_names); });
    }

    void AddRestart(CLI::App* command) {
        // As text: an enumeration would be taken as its number, too.
        command->add_option("--restart", m_restart, "Restart the system afterwards: never, ask or now")
            ->check(CLI::IsMember({"never", "ask", "now"}))
            ->type_name("WHEN");
    }

    [[nodiscard]] Restart WhenToRestart() const {
        if (m_restart == "now") return Restart::Now;
        return m_restart == "ask" ? Restart::Ask : Restart::Never;
    }

    void AddBackup() {
        CLI::App* backup = m_app.add_subcommand("backup", "Save the hives of the registry");
        AddRestart(backup);
        Run(backup, [this] { return RunBackup(m_terminal, WhenToRestart()); });
    }

    void AddRestore() {
        CLI::App* restore = m_app.add_subcommand("restore", "Backups of the hives");
        restore->require_subcommand(1);
        Run(restore->add_subcommand("list", "List them"), [this] { return RunRestoreList(m_terminal); });
        CLI::App* apply = restore->add_subcommand("apply", "Have the system start with the hives of one");
        apply->add_option("name", m_name, "As in the list")->required();
        AddRestart(apply);
        Run(apply, [this] { return RunRestoreApply(m_terminal, m_name, WhenToRestart()); });
        CLI::App* remove = restore->add_subcommand("delete", "Delete some of them");
        remove->add_option("name", m_names, "As in the list")->required();
        Run(remove, [this] { return RunRestoreDelete(m_terminal, m_names); });
    }

    void AddCompact() {
        CLI::App* compact = m_app.add_subcommand("compact", "Compact the hives of the registry");
        AddRestart(compact);
        Run(compact, [this] { return RunCompact(m_terminal, WhenToRestart()); });
    }

    CTerminal& m_terminal;
    CLI::App m_app{"Finds registry entries that refer to what no longer exists, and cleans them.",
                   "vellumor-cli"};
    std::function<ExitCode()> m_command;
    AnalyzeOptions m_analyze;
    CleanOptions m_clean;
    std::string m_format = "text";
    std::string m_name;
    Names m_names;
    std::string m_restart = "never";
    bool m_all = false;
};

}  // namespace

ExitCode RunConsole(int count, const char* const* arguments, CTerminal& terminal) {
    try {
        return CCommandLine(terminal).Parse(count, arguments);
    } catch (const std::exception& error) {
        // Memory that has run out, for one. Unhandled, it would bring up a box that no script can close.
        WriteErrorLine(terminal, std::string("The program has failed: ") + error.what());
        return ExitCode::Failed;
    }
}
