#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include <cstdio>
#include <cstdlib>

#include "tests/e2e/program.h"

int main(int argc, char** argv) {
    // These tests clean what they find, and end every registry editor that runs.
    if (!RunsUnderWine() && std::getenv("VELLUMOR_E2E") == nullptr) {
        std::puts(
            "These tests change the registry of a machine that is in use. Set VELLUMOR_E2E=1 to run them.");
        return EXIT_FAILURE;
    }
    doctest::Context context(argc, argv);
    return context.run();
}
