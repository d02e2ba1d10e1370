// SPDX-License-Identifier: MIT
//
// Files of annotation tools: COCO's files of instances, and LabelMe's. Both are JSON documents with
// a list of shapes.

#pragma once

#include <string>

#include <cntrformats/feature.h>
#include <cntrformats/geojson/parse.h>

namespace formats {

// These throw FeatureError for anything but an outline or a line.

/// An element of `annotations`: polygons are the parts of the feature, `category_id` is the label,
/// `id` the id. Masks, compressed or not, are refused.
void readCocoAnnotation(const Passage& passage, Feature& feature);

/// An element of `shapes`: polygons and rectangles become outlines, lines and line strips open
/// lines.
void readLabelMeShape(const Passage& passage, Feature& feature);

}  // namespace formats
