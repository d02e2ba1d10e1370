// SPDX-License-Identifier: MIT
//
// The program `cntr`. Start with commandline.h; each subcommand is a file in commands/. Includes go
// one way: commands/ -> draw/ -> answers/, run/ -> report/ -> cntrformats/.

#include <tools/commandline.h>

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
  try {
    return tool::run(argc, argv, tool::standardConsole());
  } catch (const std::exception& error) {
    std::cerr << "cntr: " << error.what() << '\n';
    return 2;
  }
}
