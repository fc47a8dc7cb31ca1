#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "tests/e2e/program.h"
#include "tests/hostile/disturbance.h"

int main(int argc, char** argv) {
    // These tests plant harmful things into the whole registry for a while.
    if (!RunsUnderWine() && std::getenv("VELLUMOR_E2E") == nullptr) {
        std::puts(
            "These tests change the registry of a machine that is in use. Set VELLUMOR_E2E=1 to run them.");
        return EXIT_FAILURE;
    }
    if (argc == 2 && std::string_view(argv[1]) == kDisturb) DisturbForEver();
    doctest::Context context(argc, argv);
    return context.run();
}
