// SPDX-License-Identifier: MIT

#include "program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

#include <testing/repository/repository.h>

extern char** environ;

namespace program {

namespace {

std::string content(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

/// Standard input, output and error as files, so that no pipe can fill up.
class Redirections {
 public:
  explicit Redirections(const Directory& directory) {
    posix_spawn_file_actions_init(&actions_);
    add(0, directory.path("in"), O_RDONLY);
    add(1, directory.path("out"), O_WRONLY | O_CREAT);
    add(2, directory.path("messages"), O_WRONLY | O_CREAT);
  }
  ~Redirections() { posix_spawn_file_actions_destroy(&actions_); }
  Redirections(const Redirections&) = delete;
  Redirections& operator=(const Redirections&) = delete;

  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  void add(int descriptor, const std::string& path, int flags) {
    posix_spawn_file_actions_addopen(&actions_, descriptor, path.c_str(), flags, 0600);
  }

  posix_spawn_file_actions_t actions_{};
};

int spawn(std::vector<std::string> command, const Redirections& redirections) {
  std::vector<char*> arguments;
  for (std::string& argument : command) arguments.push_back(argument.data());
  arguments.push_back(nullptr);
  pid_t child = 0;
  const int error =
      posix_spawn(&child, arguments[0], redirections.get(), nullptr, arguments.data(), environ);
  if (error != 0) throw std::system_error(error, std::generic_category(), command[0]);
  int state = 0;
  if (waitpid(child, &state, 0) != child) throw std::system_error(errno, std::generic_category());
  return WIFEXITED(state) ? WEXITSTATUS(state) : -1;
}

std::string number(double value) { return Json(value).dump(); }

std::string list(const std::vector<std::string>& elements) {
  std::string text = "[";
  for (const std::string& element : elements)
    text.append(text.size() > 1 ? "," : "").append(element);
  return text.append("]");
}

}  // namespace

Result run(const std::vector<std::string>& arguments, const std::string& input) {
  const Directory directory;
  directory.write("in", input);
  std::vector<std::string> command{CNTR_PROGRAM};
  command.insert(command.end(), arguments.begin(), arguments.end());
  std::filesystem::current_path(repositoryDirectory());
  const int status = spawn(command, Redirections(directory));
  return {status, directory.read("out"), directory.read("messages")};
}

Result runOnFullDisk(const std::vector<std::string>& arguments) {
  std::vector<std::string> command{"/bin/sh", "-c", "trap '' XFSZ; ulimit -f 1; exec \"$@\"", "sh",
                                   CNTR_PROGRAM};
  command.insert(command.end(), arguments.begin(), arguments.end());
  const Directory directory;
  directory.write("in", "");
  std::filesystem::current_path(repositoryDirectory());
  const int status = spawn(command, Redirections(directory));
  return {status, directory.read("out"), directory.read("messages")};
}

Result runShell(const std::string& line) {
  const Directory directory;
  std::filesystem::create_directory_symlink(repositoryDirectory() + "/samples",
                                            directory.path("samples"));
  const std::string programs = std::filesystem::path(CNTR_PROGRAM).parent_path().string();
  const Directory streams;
  streams.write("in", "");
  const int status =
      spawn({"/bin/sh", "-c",
             "set -e; PATH=" + programs + ":$PATH; cd " + directory.path("") + "; " + line},
            Redirections(streams));
  return {status, streams.read("out"), streams.read("messages")};
}

Result runOnTerminal(const std::vector<std::string>& arguments, const std::string& input,
                     const std::vector<std::string>& environment) {
  const Directory directory;
  const std::string in = directory.write("in", input);
  std::vector<std::string> command{"/usr/bin/env"};
  command.insert(command.end(), environment.begin(), environment.end());
  command.emplace_back(CNTR_PROGRAM);
  command.insert(command.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& argument : command) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  std::filesystem::current_path(repositoryDirectory());
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (child < 0) throw std::system_error(errno, std::generic_category(), "forkpty");
  if (child == 0) {
    const int file = open(in.c_str(), O_RDONLY);
    dup2(file, STDIN_FILENO);
    execv(pointers[0], pointers.data());
    _exit(127);
  }
  // Reading fails when the program has ended and everything has been read.
  std::string shown;
  char buffer[4096];
  for (ssize_t count = 0; (count = read(terminal, buffer, sizeof buffer)) > 0;) {
    shown.append(buffer, static_cast<std::size_t>(count));
  }
  close(terminal);
  int state = 0;
  waitpid(child, &state, 0);
  return {WIFEXITED(state) ? WEXITSTATUS(state) : -1, shown, ""};
}

Running::Running(const std::vector<std::string>& arguments) {
  int in[2];
  int out[2];
  if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0) {
    throw std::system_error(errno, std::generic_category());
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  std::vector<std::string> command{CNTR_PROGRAM};
  command.insert(command.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& argument : command) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  // Shells make background jobs ignore some signals; the program would, too.
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t every;
  sigfillset(&every);
  posix_spawnattr_setsigdefault(&attributes, &every);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
  const int error =
      posix_spawn(&process_, pointers[0], &actions, &attributes, pointers.data(), environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  ::close(in[0]);
  ::close(out[1]);
  input_ = in[1];
  output_ = out[0];
  if (error != 0) throw std::system_error(error, std::generic_category(), command[0]);
}

Running::~Running() {
  close();
  ::close(output_);
  if (process_ != 0) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
}

void Running::feed(const std::string& text) {
  std::size_t written = 0;
  while (written < text.size()) {
    const ssize_t count = write(input_, text.data() + written, text.size() - written);
    if (count < 0) throw std::system_error(errno, std::generic_category());
    written += static_cast<std::size_t>(count);
  }
}

void Running::close() {
  if (input_ >= 0) ::close(std::exchange(input_, -1));
}

std::string Running::line() {
  std::string text;
  for (char c = 0; read(output_, &c, 1) == 1 && c != '\n';) text += c;
  return text;
}

void Running::signal(int number) { kill(process_, number); }

int Running::wait() {
  int state = 0;
  rusage usage{};
  if (wait4(std::exchange(process_, 0), &state, 0, &usage) < 0) {
    throw std::system_error(errno, std::generic_category());
  }
  peakMemory_ = usage.ru_maxrss;
  return state;
}

Json runJson(std::vector<std::string> arguments, const std::string& input, int status) {
  arguments.emplace_back("--json");
  const Result result = run(arguments, input);
  EXPECT_EQ(result.status, status) << result.messages;
  return Json::parse(result.out);
}

Directory::Directory() {
  std::string name = (std::filesystem::temp_directory_path() / "cntr-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::system_error(errno, std::generic_category());
  path_ = name;
}

Directory::~Directory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string Directory::write(const std::string& name, const std::string& text) const {
  std::ofstream(path_ / name, std::ios::binary) << text;
  return path(name);
}

std::string Directory::read(const std::string& name) const { return content(path_ / name); }

std::vector<std::string> Directory::names() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path_)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string feature(const std::string& type, const std::string& coordinates,
                    const std::string& properties) {
  return R"({"type":"Feature","properties":{)" + properties + R"(},"geometry":{"type":")" + type +
         R"(","coordinates":)" + coordinates + "}}";
}

std::string polygon(const std::vector<std::string>& rings, const std::string& properties) {
  return feature("Polygon", list(rings), properties);
}

std::string multiPolygon(const std::vector<std::vector<std::string>>& parts,
                         const std::string& properties) {
  std::vector<std::string> polygons;
  for (const auto& rings : parts) polygons.push_back(list(rings));
  return feature("MultiPolygon", list(polygons), properties);
}

std::string collection(const std::vector<std::string>& features) {
  return R"({"type":"FeatureCollection","features":)" + list(features) + "}";
}

std::string ring(const std::vector<std::vector<double>>& points) {
  std::vector<std::string> positions;
  for (const auto& p : points) positions.push_back(list({number(p[0]), number(p[1])}));
  positions.push_back(positions.front());
  return list(positions);
}

std::string square(double x, double y, double size) {
  return ring({{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}});
}

std::string clockwiseSquare(double x, double y, double size) {
  return ring({{x, y}, {x, y + size}, {x + size, y + size}, {x + size, y}});
}

}  // namespace program
