#include <doctest/doctest.h>

#include "tests/driver/app_driver.h"
#include "tests/e2e/program_copy.h"

namespace fs = std::filesystem;

TEST_CASE("a start empties Backup\\System beside the program and touches nothing else") {
    const CProgramCopy copy;
    const fs::path file = copy.MakeFile("Backup\\System\\SOFTWARE.bck");
    const fs::path readOnly = copy.MakeFile("Backup\\System\\read only.bck");
    ::SetFileAttributesA(readOnly.string().c_str(), FILE_ATTRIBUTE_READONLY);
    const fs::path hidden = copy.MakeFile("Backup\\System\\hidden");
    ::SetFileAttributesA(hidden.string().c_str(), FILE_ATTRIBUTE_HIDDEN);
    const fs::path nested = copy.MakeFile("Backup\\System\\folder\\SYSTEM.bck");
    const fs::path backup = copy.MakeFile("Backup\\2009.05.14.16.03.27\\SOFTWARE.bck");
    const fs::path neighbour = copy.MakeFile("Backup\\System.txt");
    const fs::path undo = copy.MakeFile("Undo\\2009.05.14.16.03.27.reg");
    // Where the program starts is not where it lies.
    const fs::path elsewhere = copy.MakeFile("Elsewhere\\Backup\\System\\kept");
    const CAppDriver app(copy.Executable(), (copy / "Elsewhere").string());

    CHECK_FALSE(fs::exists(file));
    CHECK_FALSE(fs::exists(readOnly));
    CHECK_FALSE(fs::exists(hidden));
    CHECK_FALSE(fs::exists(nested));
    CHECK(fs::is_empty(copy / "Backup\\System"));
    for (const fs::path& kept : {backup, neighbour, undo, elsewhere}) {
        CAPTURE(kept);
        CHECK(fs::exists(kept));
    }
}

TEST_CASE("a start without a Backup folder makes none") {
    const CProgramCopy copy;
    const CAppDriver app(copy.Executable());
    CHECK_FALSE(fs::exists(copy / "Backup"));
}
