// SPDX-License-Identifier: MIT
//
// SVG elements as text. What is drawn and how it looks is decided in picture.h.

#pragma once

#include <string>
#include <vector>

#include <cntrformats/feature.h>
#include <platform/core/shapes.h>

namespace tool::svg {

/// The text with the five characters escaped that mean something in XML, and without those that XML
/// does not allow.
std::string escaped(const std::string& text);

/// The rings as one path; with the even-odd rule those inside others are holes. `attributes` follow
/// as they are; `title` is shown by browsers under the mouse, empty for none.
std::string path(const std::vector<formats::Points>& rings, bool closed,
                 const std::string& attributes, const std::string& title);
std::string circle(const qcCircle& circle);
/// REQUIRES: no skew.
std::string ellipse(const qcEllipse& ellipse);
std::string rectangle(const qcRect& rectangle);
std::string line(const qcVector<2>& from, const qcVector<2>& to);
/// A picture stretched over a rectangle; `uri` is a data URI.
std::string image(const qcRect& area, const std::string& uri);
std::string text(const qcVector<2>& position, double size, const std::string& text);

}  // namespace tool::svg
