// SPDX-License-Identifier: MIT
//
// SVG elements as text, lengths in pixels with two decimals. picture.h decides what is drawn and
// how it looks.

#pragma once

#include <string>
#include <vector>

#include <cntrformats/feature.h>
#include <tools/draw/box.h>
#include <tools/draw/marks.h>

namespace tool::svg {

/// A number with at most this many decimals. The decimal point does not depend on the locale.
std::string number(double value, int decimals = 2);

/// The text with the five special characters of XML escaped, without characters that XML does not
/// allow.
std::string escaped(const std::string& text);

/// Lines or rings as one path; by the even-odd rule, rings inside others are holes. `attributes`
/// are written as given; `title` is the tooltip in browsers, empty for none.
std::string path(const std::vector<formats::Points>& lines, bool closed,
                 const std::string& attributes, const std::string& title);
std::string circle(const Circle& circle, const std::string& attributes, const std::string& title);
std::string ellipse(const Ellipse& ellipse);
std::string rectangle(const Box& box);
std::string line(const qcVector<2>& from, const qcVector<2>& to);
/// A picture stretched over a rectangle; `uri` is a data URI.
std::string image(const Box& box, const std::string& uri);
std::string text(const qcVector<2>& position, double size, const std::string& text);

}  // namespace tool::svg
