#include "cli.h"

#include "code_page_commands.h"
#include "errors.h"
#include "geom.h"
#include "help.h"
#include "placement.h"
#include "pane_command.h"
#include "settings.h"
#include "symbol_commands.h"
#include "text_commands.h"
#include "tour.h"

#include <cadtools/bridge/managed_exception.h>
#include <cadtools/compat/exceptions.h>
#include <cadtools/version.h>

#include <new>
#include <ostream>
#include <string>

namespace cadtools::cli {
namespace {

void Dispatch(std::span<const std::string_view> args, std::istream& in, std::ostream& out) {
  if (args.empty()) throw UsageError("no command given");
  const std::string_view command = args[0];
  if (command == "--help" || command == "-h" || command == "help") {
    out << FullHelp();
  } else if (command == "--version") {
    out << "cadtools " << kVersionString << '\n';
  } else if (command == "tour") {
    if (args.size() > 1) throw UsageError("tour takes no arguments");
    PrintTour(out);
  } else if (command == "geom") {
    RunGeom(args.subspan(1), out);
  } else if (command == "natsort") {
    RunNatsort(args.subspan(1), in, out);
  } else if (command == "like") {
    RunLike(args.subspan(1), in, out);
  } else if (command == "nextname") {
    RunNextname(args.subspan(1), out);
  } else if (command == "units") {
    RunUnits(args.subspan(1), out);
  } else if (command == "settings") {
    RunSettings(args.subspan(1), out);
  } else if (command == "placement") {
    RunPlacement(args.subspan(1), out);
  } else if (command == "convert") {
    RunConvert(args.subspan(1), in, out);
  } else if (command == "charset") {
    RunCharset(args.subspan(1), out);
  } else if (command == "font") {
    RunFont(args.subspan(1), out);
  } else if (command == "symbol") {
    RunSymbol(args.subspan(1), out);
  } else if (command == "pane") {
    RunPane(args.subspan(1), out);
  } else {
    throw UsageError("unknown command '" + std::string(command) + "'");
  }
}

}  // namespace

int Run(std::span<const std::string_view> args, std::istream& in, std::ostream& out, std::ostream& err) {
  try {
    Dispatch(args, in, out);
    out.flush();
    if (!out) throw OutputError("cannot write to standard output");
    return kExitOk;
  } catch (const UsageError& e) {
    err << "cadtools: " << e.what() << '\n'
        << (e.usage().empty() ? ShortUsage() : e.usage()) << "Run 'cadtools --help' for all questions and options.\n";
    return kExitUsage;
  } catch (const IoError& e) {
    err << "cadtools: " << e.what() << '\n';
    return kExitOutput;
  } catch (const CommandFailed& e) {
    err << "cadtools: " << e.what() << '\n';
    return kExitOutput;
  } catch (const std::bad_alloc&) {
    err << "cadtools: out of memory\n";
    return kExitOutput;
  } catch (CException* e) {
    // The library's own exceptions come as heap pointers. Managed code's and
    // a missing runtime's say what happened; the others only that an
    // argument was refused.
    std::string what = "the library rejected an argument";
    if (dynamic_cast<CManagedException*>(e) != nullptr || dynamic_cast<CRuntimeUnavailableException*>(e) != nullptr) {
      WCHAR text[512];
      if (e->GetErrorMessage(text, 512)) what = ToUtf8(CString(text));
    }
    e->Delete();
    err << "cadtools: " << what << '\n';
    return kExitOutput;
  } catch (const std::exception& e) {
    err << "cadtools: " << e.what() << '\n';
    return kExitOutput;
  }
}

}  // namespace cadtools::cli
