// cadtools: the library's services on the command line; see help.cpp.
#include "cli.h"

#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace {

// Windows hands main() its arguments in the ANSI code page, which cannot
// carry every name; take them as UTF-16 from the system and pass UTF-8 on,
// as on every other target.
std::vector<std::string> Utf8Arguments() {
  std::vector<std::string> args;
  int count = 0;
  LPWSTR* wide = CommandLineToArgvW(GetCommandLineW(), &count);
  if (wide == nullptr) return args;
  for (int i = 1; i < count; ++i) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide[i], -1, nullptr, 0, nullptr, nullptr);
    std::string arg(size > 0 ? static_cast<std::size_t>(size) : 1U, '\0');
    if (size > 0) WideCharToMultiByte(CP_UTF8, 0, wide[i], -1, arg.data(), size, nullptr, nullptr);
    arg.pop_back();  // the terminating NUL
    args.push_back(std::move(arg));
  }
  LocalFree(wide);
  return args;
}

}  // namespace

int main() {
  const std::vector<std::string> utf8 = Utf8Arguments();
  const std::vector<std::string_view> args(utf8.begin(), utf8.end());
  // convert passes bytes through as they are; text mode would turn \n into
  // \r\n and stop reading at a Ctrl-Z byte.
  if (!args.empty() && args[0] == "convert") {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
  }
  return cadtools::cli::Run(args, std::cin, std::cout, std::cerr);
}

#else

int main(int argc, char** argv) {
  std::vector<std::string_view> args;
  for (int i = 1; i < argc; ++i) args.emplace_back(argv[i]);
  return cadtools::cli::Run(args, std::cin, std::cout, std::cerr);
}

#endif
