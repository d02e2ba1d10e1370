// SPDX-License-Identifier: MIT
//
// Runs the built program as a user would, and gives it files to read.

#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace program {

using Json = nlohmann::ordered_json;

struct Result {
  /// The exit status; -1 when a signal ended the program.
  int status = -1;
  std::string out;
  std::string messages;
};

/// Runs `cntr` with these arguments and this standard input, in the repository's root.
Result run(const std::vector<std::string>& arguments, const std::string& input = "");

/// The same as if the disk were full: a file takes 512 bytes and no more.
Result runOnFullDisk(const std::vector<std::string>& arguments);

/// What a terminal shows when standard output and standard error are connected to it. `environment`
/// holds further variables, "NAME=value".
Result runOnTerminal(const std::vector<std::string>& arguments, const std::string& input = "",
                     const std::vector<std::string>& environment = {});

/// Runs a shell command line in a new directory. In it, `cntr` is the program and `samples` the
/// samples.
Result runShell(const std::string& line);

/// A program that is running: `cntr` with these arguments. Its messages are discarded.
class Running {
 public:
  explicit Running(const std::vector<std::string>& arguments);
  ~Running();
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

  /// Appends to its standard input.
  void feed(const std::string& text);
  /// Ends its standard input.
  void close();
  /// The next line of its standard output, without its end; waits for it.
  std::string line();
  void signal(int number);
  /// Waits until it ends; returns the status of waitpid().
  int wait();
  /// The largest amount of memory that it had, in kilobytes. To be called after wait().
  long peakMemory() const { return peakMemory_; }

 private:
  int process_ = 0;
  int input_ = -1;
  int output_ = -1;
  long peakMemory_ = 0;
};

/// The answers of a command with --json. Fails the test unless the program ended with `status`.
Json runJson(std::vector<std::string> arguments, const std::string& input = "", int status = 0);

/// A new directory that is removed with everything in it.
class Directory {
 public:
  Directory();
  ~Directory();
  Directory(const Directory&) = delete;
  Directory& operator=(const Directory&) = delete;

  /// The path of a file of that name.
  std::string path(const std::string& name) const { return (path_ / name).string(); }
  /// Writes a file; returns its path.
  std::string write(const std::string& name, const std::string& text) const;
  std::string read(const std::string& name) const;
  /// The names of all files in it, sorted.
  std::vector<std::string> names() const;

 private:
  std::filesystem::path path_;
};

/// A feature with this geometry; `properties` are the members of that object.
std::string feature(const std::string& type, const std::string& coordinates,
                    const std::string& properties = "");
/// A Polygon with these rings.
std::string polygon(const std::vector<std::string>& rings, const std::string& properties = "");
/// A MultiPolygon with these parts, each with its rings.
std::string multiPolygon(const std::vector<std::vector<std::string>>& parts,
                         const std::string& properties = "");
std::string collection(const std::vector<std::string>& features);

/// The ring as GeoJSON: "[[x,y],...]" with the first point repeated at the end.
std::string ring(const std::vector<std::vector<double>>& points);
/// Corners (x, y), (x + size, y), ... with positive area in the file's coordinates.
std::string square(double x, double y, double size);
/// The same corners, the other way round from the same first one.
std::string clockwiseSquare(double x, double y, double size);

}  // namespace program
