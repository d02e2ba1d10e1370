// SPDX-License-Identifier: MIT
//
// Loads what stores_every_class.cpp has stored in the given file, and prints the names of the
// classes. It mentions none of them: a program that is linked with static libraries must have them
// nevertheless.

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <typeinfo>

#include <platform/core/archive.h>
#include <platform/core/handle.h>

namespace {

struct Pointers : qcPersistent {
  using qcPersistent::serializePointer;
};

}  // namespace

int main(int, char** arguments) {
  std::ifstream file(arguments[1], std::ios::binary);
  qcStreamArchive archive(file);
  long count = 0;
  archive || count;
  for (; count > 0; --count) {
    qcPersistent* object = nullptr;
    Pointers::serializePointer(archive, nullptr, object);
    std::cout << qf_ClassName(typeid(*object)) << '\n';
    // The archive keeps those that handles can share.
    const std::unique_ptr<qcPersistent> own(dynamic_cast<qcRepBase*>(object) ? nullptr : object);
  }
}
