#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include "tests/e2e/program.h"

int main(int argc, char** argv) { return RunTests(argc, argv); }
