// SPDX-License-Identifier: MIT

#include "program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <system_error>

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
  std::filesystem::current_path(CNTR_REPOSITORY_DIR);
  const int status = spawn(command, Redirections(directory));
  return {status, directory.read("out"), directory.read("messages")};
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
