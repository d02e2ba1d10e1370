// SPDX-License-Identifier: MIT
//
// Asks all rooms of the program, golden_answers or golden_measures, and compares the hashes of
// their answers with those of a file:
//
//   golden_answers FILE                      compares, and names the rooms that answer differently
//   golden_answers --but-trigonometry FILE   the same without the rooms that may differ elsewhere
//   golden_answers --write FILE              writes the file anew
//   golden_answers --trigonometry            names the rooms that may differ elsewhere
//   golden_answers --list ROOM               prints every answer of a room, to see which one
//   differs

#include <exception>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "rooms.h"

namespace {

using golden::Answers;
using golden::Room;

/// "room answers hash", the line of a room.
std::string lineOf(const Room& room) {
  Answers answers;
  room.ask(answers);
  std::ostringstream line;
  line << room.name << ' ' << answers.count() << ' ' << std::hex << std::setw(16)
       << std::setfill('0') << answers.hash();
  return line.str();
}

/// The lines of a file by their rooms.
std::map<std::string, std::string> readLines(const std::string& file) {
  std::ifstream in(file);
  if (!in) throw std::runtime_error("cannot read " + file);
  std::map<std::string, std::string> lines;
  for (std::string line; std::getline(in, line);) lines[line.substr(0, line.find(' '))] = line;
  return lines;
}

int compare(const std::string& file, bool withTrigonometry) {
  auto expected = readLines(file);
  int differences = 0;
  for (const Room& room : golden::rooms()) {
    if (room.usesTrigonometry && !withTrigonometry) {
      expected.erase(room.name);
      continue;
    }
    const std::string line = lineOf(room);
    const bool isSame = expected[room.name] == line;
    std::cout << (isSame ? "same    " : "DIFFERS ") << line << '\n';
    expected.erase(room.name);
    if (!isSame) ++differences;
  }
  for (const auto& [name, line] : expected) std::cout << "MISSING " << name << '\n';
  return differences == 0 && expected.empty() ? 0 : 1;
}

int write(const std::string& file) {
  std::ofstream out(file, std::ios::binary);
  for (const Room& room : golden::rooms()) out << lineOf(room) << '\n';
  out.close();
  if (!out) throw std::runtime_error("cannot write " + file);
  return 0;
}

int nameTrigonometry() {
  for (const Room& room : golden::rooms()) {
    if (room.usesTrigonometry) std::cout << room.name << '\n';
  }
  return 0;
}

int list(const std::string& name) {
  for (const Room& room : golden::rooms()) {
    if (name != room.name) continue;
    Answers answers(std::cout);
    room.ask(answers);
    return 0;
  }
  throw std::runtime_error("no room is named " + name);
}

}  // namespace

int main(int count, char** arguments) try {
  const std::vector<std::string> words(arguments + 1, arguments + count);
  if (words == std::vector<std::string>{"--trigonometry"}) return nameTrigonometry();
  if (words.size() == 1) return compare(words[0], true);
  if (words.size() == 2 && words[0] == "--but-trigonometry") return compare(words[1], false);
  if (words.size() == 2 && words[0] == "--write") return write(words[1]);
  if (words.size() == 2 && words[0] == "--list") return list(words[1]);
  std::cerr << "golden_answers FILE | --but-trigonometry FILE | --write FILE | --trigonometry | "
               "--list ROOM\n";
  return 2;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 2;
}
