// SPDX-License-Identifier: MIT
//
// RegionSet in Python: construction and contents.

#include <python/src/shapearguments.h>
#include <python/src/shapebindings.h>

namespace nb = nanobind;

namespace python {

namespace {

/// Raises IndexError; negative numbers count from the end.
Region regionAt(const RegionSet& set, nb::ssize_t number) {
  const auto count = static_cast<nb::ssize_t>(set.parts().size());
  if (number < 0) number += count;
  if (number < 0 || number >= count) throw nb::index_error("there is no such region");
  return Region(set.parts()[static_cast<std::size_t>(number)]);
}

nb::list regionsOf(const RegionSet& set) {
  nb::list regions;
  for (const Part& part : set.parts()) regions.append(Region(part));
  return regions;
}

}  // namespace

void defineRegionSet(RegionSetClass& set) {
  set.def(
      "__init__",
      [](RegionSet* self, nb::handle regions) { new (self) RegionSet(partsOf(regions)); },
      nb::arg("regions").none() = nb::make_tuple(),
      nb::sig("def __init__(self, regions: collections.abc.Iterable[Region] = ()) -> None"));
  set.def("__len__", [](const RegionSet& self) { return self.parts().size(); });
  set.def("__getitem__", regionAt, nb::arg("number"), "A copy of one region.");
  set.def(
      "__iter__", [](const RegionSet& self) { return nb::iter(regionsOf(self)); },
      nb::sig("def __iter__(self) -> collections.abc.Iterator[Region]"));
  set.def(
      "__reduce__",
      [](nb::handle self) {
        return nb::make_tuple(self.type(),
                              nb::make_tuple(regionsOf(nb::cast<const RegionSet&>(self))));
      },
      nb::sig("def __reduce__(self) -> tuple[type, tuple[object, ...]]"));
}

}  // namespace python
