#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include <string_view>

#include "tests/e2e/program.h"
#include "tests/hostile/disturbance.h"

int main(int argc, char** argv) {
    if (argc == 2 && std::string_view(argv[1]) == kDisturb) DisturbForEver();
    return RunTests(argc, argv);
}
