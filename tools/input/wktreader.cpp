// SPDX-License-Identifier: MIT
//
// WKT with a geometry to each line.

#include <tools/input/lines.h>
#include <tools/input/readers.h>
#include <tools/input/wkt.h>

namespace tool {

void readWkt(Source& source, Sink& sink) {
  Lines lines(source);
  std::string text;
  std::size_t number = 0;
  while (lines.next(text)) {
    if (isBlank(text)) continue;
    ++number;
    sink.take({{number, lines.number()}, text.size(), [text, number] {
                 Feature feature;
                 feature.number = number;
                 feature.geometry = parseWkt(text);
                 return feature;
               }});
  }
  if (number == 0) throw FileError("nothing in it");
}

}  // namespace tool
