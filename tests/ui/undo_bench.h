#pragma once

#include "tests/support/program_files.h"
#include "tests/ui/dialog_bench.h"

/// The Undo dialog, over a folder of undo files of the test's own.
struct UndoBench : DialogBench {
    static constexpr int kDelete = 1029;

    UndoBench() : DialogBench(32830, "Undo repair", 1027) { undo.Make(); }

    CProgramSubfolder undo{"Undo"};
};
