// The program larkstone: split-time analysis on the command line.

#include "cli/program.hpp"

int main(int argc, char** argv) { return larkstone::cli::runProgram(argc, argv); }
