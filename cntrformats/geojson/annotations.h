// SPDX-License-Identifier: MIT
//
// What annotation tools write: COCO's files of instances, and LabelMe's. Both are documents of JSON
// with a list of shapes in them.

#pragma once

#include <string>

#include <cntrformats/feature.h>
#include <cntrformats/geojson/parse.h>

namespace formats {

// Throw FeatureError for what is no outline or line.

/// An element of `annotations`: polygons are the parts of the feature, `category_id` is the label,
/// `id` the id. Masks, compressed or not, are no outlines.
void readCocoAnnotation(std::string& text, const TextPlace& place, Feature& feature);

/// An element of `shapes`: polygons and rectangles are outlines, lines and line strips open lines.
void readLabelMeShape(std::string& text, const TextPlace& place, Feature& feature);

}  // namespace formats
