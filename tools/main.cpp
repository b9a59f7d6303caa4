// cadtools: answers plane-geometry questions with the library; see help.cpp.
#include "cli.h"

#include <iostream>
#include <string_view>
#include <vector>

int main(int argc, char** argv) {
  std::vector<std::string_view> args;
  for (int i = 1; i < argc; ++i) args.emplace_back(argv[i]);
  return cadtools::cli::Run(args, std::cout, std::cerr);
}
