// SPDX-License-Identifier: MIT

#include <cntrtable/arrowattributes.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

#include <cntrtable/arrowbytes.h>
#include <cntrtable/arrowchecks.h>
#include <cntrtable/arrowmaking.h>

namespace table {

namespace {

constexpr const char* labelName = "label";
constexpr const char* problemName = "problem";
constexpr const char* edgesName = "edge_elements";
constexpr const char* magnitudeName = "magnitude";
constexpr const char* angleName = "angle";

constexpr std::int64_t largestLabel = std::numeric_limits<std::uint32_t>::max();
constexpr std::int64_t largestMagnitude = std::numeric_limits<std::uint16_t>::max();
constexpr std::int64_t largestAngle = std::numeric_limits<std::uint8_t>::max();

// Types of columns

bool isWhole(const ArrowSchema& schema) {
  const std::string_view format = schema.format;
  return format.size() == 1 && format.find_first_of("cCsSiIlL") == 0;
}

bool isEdges(const ArrowSchema& schema) {
  if (!isList(schema) || schema.n_children != 1 || schema.children == nullptr) return false;
  const ArrowSchema* const element = schema.children[0];
  if (!isReadable(element) || !isStruct(*element)) return false;
  const auto hasWhole = [element](const char* name) {
    const std::int64_t child = childNamed(*element, name);
    return child >= 0 && isWhole(*element->children[child]);
  };
  return hasWhole(magnitudeName) && hasWhole(angleName);
}

/// The name, row and largest valid value of a number, for messages.
struct NumberPlace {
  const char* name;
  std::size_t row;
  std::int64_t largest;
};

/// A column of whole numbers of any size.
class WholeNumbers {
 public:
  WholeNumbers(const ArrowSchema& schema, const ArrowArray& array, std::size_t level)
      : format_(*schema.format), array_(array) {
    requireArray(&array, level, 2, 0);
    if (array.length > 0 && array.buffers[1] == nullptr)
      refuse(placeOf(level) + ": there are no numbers");
  }

  /// -1 for a null.
  std::int64_t at(std::int64_t index, const NumberPlace& place) const {
    if (isNullAt(array_, index)) return -1;
    switch (format_) {
      case 'c':
        return checked<std::int8_t>(index, place);
      case 'C':
        return checked<std::uint8_t>(index, place);
      case 's':
        return checked<std::int16_t>(index, place);
      case 'S':
        return checked<std::uint16_t>(index, place);
      case 'i':
        return checked<std::int32_t>(index, place);
      case 'I':
        return checked<std::uint32_t>(index, place);
      case 'l':
        return checked<std::int64_t>(index, place);
      default:
        return checked<std::uint64_t>(index, place);
    }
  }

 private:
  template <class T>
  std::int64_t checked(std::int64_t index, const NumberPlace& place) const {
    T number = 0;
    const std::int64_t first = (array_.offset + index) * std::int64_t{sizeof number};
    std::memcpy(&number, static_cast<const std::byte*>(array_.buffers[1]) + first, sizeof number);
    if (std::cmp_less(number, 0) || std::cmp_greater(number, place.largest)) {
      refuse(std::string(place.name) + " in row " + std::to_string(place.row) +
             " must be from 0 to " + std::to_string(place.largest) + ", not " +
             std::to_string(number));
    }
    return static_cast<std::int64_t>(number);
  }

  char format_;
  ArrowArray array_;
};

// Reading

void appendLabels(const ArrowSchema& schema, const ArrowArray& array, std::size_t firstRow,
                  Attributes& attributes) {
  const auto numbers = inColumn(labelName, [&] { return WholeNumbers(schema, array, 0); });
  for (std::int64_t i = 0; i < array.length; ++i) {
    const std::size_t row = firstRow + static_cast<std::size_t>(i);
    attributes.labels.push_back(numbers.at(i, {labelName, row, largestLabel}));
  }
}

void appendProblems(const ArrowSchema& schema, const ArrowArray& array, std::size_t firstRow,
                    Attributes& attributes) {
  const auto texts = inColumn(problemName, [&] { return bytesOf(schema, array); });
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (!texts[i]) continue;
    const auto* const characters = reinterpret_cast<const char*>(texts[i]->data());
    attributes.problems.push_back({firstRow + i, std::string(characters, texts[i]->size())});
  }
}

/// The items of lists, with their two numbers.
class ElementColumn {
 public:
  ElementColumn(const ArrowSchema& schema, const ArrowArray& lists)
      : elements_(elementsOf(schema, lists)),
        magnitudes_(numbersNamed(magnitudeName, *schema.children[0])),
        angles_(numbersNamed(angleName, *schema.children[0])) {}

  std::int64_t length() const { return elements_.length; }

  void append(std::int64_t index, std::size_t row, EdgeElements& edges) const {
    std::int64_t magnitude = -1;
    std::int64_t angle = -1;
    if (!isNullAt(elements_, index)) {
      magnitude = magnitudes_.at(index, {magnitudeName, row, largestMagnitude});
      angle = angles_.at(index, {angleName, row, largestAngle});
    }
    const bool isMissing = magnitude < 0 || angle < 0;
    edges.magnitudes.push_back(isMissing ? -1 : static_cast<std::int32_t>(magnitude));
    edges.angles.push_back(isMissing ? std::uint8_t{0} : static_cast<std::uint8_t>(angle));
  }

 private:
  static const ArrowArray& elementsOf(const ArrowSchema& schema, const ArrowArray& lists) {
    requireArray(&lists, 0, 2, 1);
    requireArray(lists.children[0], 1, 1, schema.children[0]->n_children);
    return *lists.children[0];
  }

  WholeNumbers numbersNamed(const char* name, const ArrowSchema& schema) const {
    const std::int64_t child = childNamed(schema, name);
    return {*schema.children[child], childWindow(elements_, child, 2), 2};
  }

  const ArrowArray& elements_;
  WholeNumbers magnitudes_;
  WholeNumbers angles_;
};

void appendEdges(const ArrowSchema& schema, const ArrowArray& lists, std::size_t firstRow,
                 EdgeElements& edges) {
  const ElementColumn elements(schema, lists);
  const std::vector<std::int64_t> offsets =
      offsetsOf(schema, lists, 0, lists.length, elements.length(), 0);
  for (std::int64_t i = 0; i < lists.length; ++i) {
    const auto row = static_cast<std::size_t>(i);
    const std::int64_t end = isNullAt(lists, i) ? offsets[row] : offsets[row + 1];
    for (std::int64_t k = offsets[row]; k < end; ++k) elements.append(k, firstRow + row, edges);
    edges.counts.push_back(end - offsets[row]);
  }
}

// Writing

template <class T>
qcArrowColumn numberColumn(const char* format, const char* name, ArrowValidity&& validity,
                           std::vector<T>&& numbers) {
  const auto length = static_cast<std::int64_t>(numbers.size());
  return {makeArrowSchema({format, name, "", true}, {}),
          makeArrowArray(length, validity.nulls,
                         {std::move(validity.bitmap), bufferOf(std::move(numbers))}, {})};
}

/// Negative numbers stand for nulls.
template <class T>
ArrowValidity validityOf(const std::vector<T>& numbers) {
  std::vector<std::uint8_t> bitmap = makeBitmap(numbers.size());
  for (std::size_t i = 0; i < numbers.size(); ++i)
    if (numbers[i] >= 0) setBit(bitmap, i);
  return makeArrowValidity(std::move(bitmap), numbers.size());
}

qcArrowColumn problemColumn(const std::vector<Problem>& problems, std::size_t rows) {
  TextColumn texts(rows);
  auto problem = problems.begin();
  for (std::size_t row = 0; row < rows; ++row) {
    const bool isThere = problem != problems.end() && problem->feature == row;
    texts.add(isThere ? std::optional<std::string_view>(problem->why) : std::nullopt);
    if (isThere) ++problem;
  }
  return std::move(texts).named(problemName);
}

qcArrowColumn edgeColumn(EdgeElements&& edges) {
  const std::size_t count = edges.magnitudes.size();
  ArrowValidity validity = validityOf(edges.magnitudes);
  std::vector<std::uint16_t> magnitudes(count);
  for (std::size_t i = 0; i < count; ++i)
    magnitudes[i] = static_cast<std::uint16_t>(std::max(edges.magnitudes[i], 0));
  std::vector<qcArrowColumn> numbers =
      listOf(numberColumn("S", magnitudeName, {}, std::move(magnitudes)));
  numbers.push_back(numberColumn("C", angleName, {}, std::move(edges.angles)));
  qcArrowColumn elements =
      makeStruct({"+s", "item", "", true}, count, std::move(validity), std::move(numbers));
  std::vector<std::int64_t> offsets{0};
  for (const std::int64_t places : edges.counts) offsets.push_back(offsets.back() + places);
  return makeList({"", edgesName, "", true}, {}, std::move(offsets), std::move(elements));
}

}  // namespace

void appendAttributes(const ArrowSchema& schema, const ArrowArray& table, Attributes& attributes) {
  const std::size_t firstRow = attributes.labels.size();
  const auto appendFrom = [&](const char* name, bool (*isOwn)(const ArrowSchema&), auto append) {
    const std::int64_t child = childNamed(schema, name);
    if (child < 0 || !isOwn(*schema.children[child])) return;
    append(*schema.children[child], inColumn(name, [&] { return childWindow(table, child, 0); }));
  };
  appendFrom(labelName, isWhole, [&](const ArrowSchema& column, const ArrowArray& rows) {
    appendLabels(column, rows, firstRow, attributes);
  });
  appendFrom(problemName, isText, [&](const ArrowSchema& column, const ArrowArray& rows) {
    appendProblems(column, rows, firstRow, attributes);
  });
  appendFrom(edgesName, isEdges, [&](const ArrowSchema& column, const ArrowArray& rows) {
    inColumn(edgesName, [&] { appendEdges(column, rows, firstRow, attributes.edges); });
  });
  attributes.labels.resize(firstRow + static_cast<std::size_t>(table.length), -1);
}

void addAttributeColumns(Attributes&& attributes, std::vector<qcArrowColumn>& columns) {
  const std::size_t rows = attributes.labels.size();
  ArrowValidity labelled = validityOf(attributes.labels);
  columns.push_back(
      numberColumn("l", labelName, std::move(labelled), std::move(attributes.labels)));
  if (!attributes.problems.empty()) columns.push_back(problemColumn(attributes.problems, rows));
  if (!attributes.edges.counts.empty()) columns.push_back(edgeColumn(std::move(attributes.edges)));
}

}  // namespace table
