// SPDX-License-Identifier: MIT

#include <cntrformats/fields.h>

namespace formats {

namespace {

/// One blank for each run of blanks, and none at the ends.
std::string withSingleBlanks(std::string_view line) {
  std::string text;
  for (const char c : line) {
    const bool isBlank = c == ' ' || c == '\t';
    if (!isBlank) text += c;
    if (isBlank && !text.empty() && text.back() != ' ') text += ' ';
  }
  if (text.ends_with(' ')) text.pop_back();
  return text;
}

}  // namespace

bool splitCsv(std::string_view line, std::vector<std::string>& fields, char separator) {
  std::string single;
  if (separator == ' ') {
    single = withSingleBlanks(line);
    line = single;
  }
  std::size_t used = 0;
  const auto next = [&]() -> std::string& {
    if (used == fields.size()) fields.emplace_back();
    fields[used].clear();
    return fields[used++];
  };
  std::string* field = &next();
  bool isQuoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == '"' && isQuoted && i + 1 < line.size() && line[i + 1] == '"') {
      *field += line[++i];
    } else if (c == '"' && (isQuoted || field->empty())) {
      isQuoted = !isQuoted;
    } else if (c == separator && !isQuoted) {
      field = &next();
    } else {
      *field += c;
    }
  }
  fields.resize(used);
  return !isQuoted;
}

std::string csvField(const std::string& text) {
  const bool isEdged = !text.empty() && (text.front() == ' ' || text.back() == ' ');
  if (!isEdged && text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

}  // namespace formats
