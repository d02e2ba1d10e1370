// SPDX-License-Identifier: MIT

#include <cntrformats/otherkinds.h>

#include <algorithm>
#include <string>
#include <vector>

#include <cntrformats/errors.h>
#include <cntrformats/fields.h>
#include <cntrformats/number.h>

namespace formats {

namespace {

/// A class, and a box of four numbers or an outline of pairs of numbers, all relative to the size
/// of the image.
bool isYolo(std::string_view line) {
  constexpr std::size_t fewest = 5;
  std::vector<std::string> fields;
  splitCsv(line.substr(0, line.find_last_not_of("\r\n") + 1), fields, ' ');
  if (fields.size() < fewest || fields.size() % 2 == 0) return false;
  const bool isClass = fields[0].find_first_not_of("0123456789") == std::string::npos;
  return isClass && std::all_of(fields.begin() + 1, fields.end(), [](const std::string& field) {
           try {
             const double number = finiteNumber(field);
             return number >= 0.0 && number <= 1.0;
           } catch (const FeatureError&) {
             return false;
           }
         });
}

}  // namespace

const char* otherKind(std::string_view line) {
  if (line.starts_with("%YAML")) {
    return "a YAML file, perhaps of OpenCV's FileStorage; write the points as lines of x,y";
  }
  if (line.starts_with("<?xml") || line.starts_with("<opencv_storage")) {
    return "an XML file, perhaps of OpenCV's FileStorage; write the points as lines of x,y";
  }
  if (isYolo(line)) {
    return "YOLO labels, whose numbers are relative to the size of an image; write pixels as lines "
           "of x,y";
  }
  return nullptr;
}

}  // namespace formats
