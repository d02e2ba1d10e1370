// SPDX-License-Identifier: MIT
//
// cntr query: one question about points, a segment or a direction, asked of every feature.

#include <memory>
#include <optional>

#include <cntrformats/errors.h>
#include <tools/answers/pointfile.h>
#include <tools/answers/questions.h>
#include <tools/commands/commands.h>
#include <tools/commands/numberlist.h>
#include <tools/commands/options.h>
#include <tools/commands/rowanswerer.h>

namespace tool {

using namespace formats;

namespace {

struct QueryOptions {
  InputOptions input;
  RowOptions rows;
  std::optional<std::string> point;
  std::string points;
  std::optional<std::string> segment;
  std::optional<std::string> direction;
  bool zeroInside = false;
  bool endTouches = false;
  bool withHoles = true;
};

std::vector<double> numbers(const char* option, const std::string& text, std::size_t count,
                            const char* form) {
  if (const auto parsed = parseNumbers(text, count)) return *parsed;
  throw CLI::ValidationError(option, "'" + text + "' is not of the form " + form);
}

Question questionOf(const QueryOptions& options) {
  if (options.point) {
    const auto n = numbers("--point", *options.point, 2, "X,Y");
    return askPoint({n[0], n[1]}, options.withHoles, options.zeroInside);
  }
  if (!options.points.empty())
    return askPoints(readPoints(options.points), options.withHoles, options.zeroInside);
  if (options.segment) {
    const auto n = numbers("--segment", *options.segment, 4, "X1,Y1,X2,Y2");
    return askSegment({n[0], n[1]}, {n[2], n[3]}, options.withHoles, options.endTouches);
  }
  return askDirection(numbers("--direction", options.direction.value(), 1, "DEGREES")[0]);
}

/// A table does not show the name of its only file.
bool showsFile(const QueryOptions& options) {
  return !options.rows.isTable() || options.input.files.size() > 1;
}

std::vector<std::string> columnsOf(const QueryOptions& options, const Question& question) {
  std::vector<std::string> columns{"feature", "label", "id"};
  if (showsFile(options)) columns.insert(columns.begin(), "file");
  columns.insert(columns.end(), question.columns.begin(), question.columns.end());
  columns.emplace_back("note");
  return columns;
}

/// Answers each feature's question in rows.
class Asking : public RowAnswerer {
 public:
  Asking(const QueryOptions& options, Question question, Session& session)
      : RowAnswerer(makeRows(options.rows, session.out, columnsOf(options, question),
                             EmptyColumns::eLeftOut, session.console.outStyle)),
        question_(std::move(question)),
        showsFile_(showsFile(options)) {}

 protected:
  std::vector<Row> rowsOf(const Origin& origin, const Feature& feature,
                          std::string& /*complaint*/) const override {
    std::vector<Row> rows;
    for (const Row& answer : question_.answer(feature.geometry)) {
      Row row = heading(origin.file, feature);
      row.insert(row.end(), answer.begin(), answer.end());
      row.emplace_back();
      rows.push_back(std::move(row));
    }
    return rows;
  }

  Row unanswered(const Origin& origin, const Feature& feature,
                 const std::string& why) const override {
    Row row = heading(origin.file, feature);
    row.resize(row.size() + question_.columns.size());
    row.emplace_back(why);
    return row;
  }

 private:
  Row heading(const std::string& file, const Feature& feature) const {
    Row row;
    if (showsFile_) row.emplace_back(file);
    row.emplace_back(feature.number);
    row.push_back(labelCell(feature.label));
    row.push_back(feature.id ? Cell(*feature.id) : Cell());
    return row;
  }

  Question question_;
  bool showsFile_;
};

void ask(const QueryOptions& options, Session& session) {
  Asking asking(options, questionOf(options), session);
  Inputs inputs = options.input.inputs();
  printRows(inputs, session, asking);
}

void query(const QueryOptions& options, Session& session) {
  try {
    ask(options, session);
  } catch (const FileError& error) {
    session.diagnostics.badFile(options.points, error.what());
  }
}

constexpr const char* queryHelp =
    "--point tells for each feature whether the point is inside, its distance from\n"
    "the boundary, the nearest boundary point and the nearest vertex. --points does\n"
    "so for each point of a file, with x,y or id,x,y on each line. --segment lists\n"
    "the crossings with each feature in order along the segment; a vertex on the\n"
    "segment is listed once for each of its two edges. --direction gives the vertex\n"
    "farthest in that direction. Vertices are counted from 0 as in the file, parts\n"
    "and holes from 1; a ring without a hole number is an outline.\n\n"
    "A point within 1e-6 of a vertex is inside, unless it is outside the bounding\n"
    "box; elsewhere within 1e-6 of the boundary it may fall on either side. For a\n"
    "point near a corner of the bounding box the ray that decides can be too short;\n"
    "the answer is no where the outline clearly does not contain the point. Where\n"
    "outlines cross or overlap, the points that they fill are inside. A feature that\n"
    "cannot be queried has a row with a note.\n\n"
    "Examples:\n"
    "  cntr query --point 100,56 samples/coins.geojson\n"
    "  cntr query --segment 0,50,384,50 --json samples/coins.geojson\n"
    "  cntr query --direction 90 samples/cell.geojson";

void addQuestions(CLI::App& command, QueryOptions& options) {
  CLI::App& question = *command.add_option_group("Question", "One of these:");
  question.add_option("--point", options.point, "Ask about a point")->type_name("X,Y");
  question.add_option("--points", options.points, "Ask about each point of a file")
      ->type_name("FILE");
  question.add_option("--segment", options.segment, "Ask for the crossings with a segment")
      ->type_name("X1,Y1,X2,Y2");
  question
      .add_option("--direction", options.direction,
                  "Ask for the vertex farthest in this direction,\n"
                  "in degrees from the x axis towards the y axis")
      ->type_name("DEGREES");
  question.require_option(1);
}

}  // namespace

void addQuery(CLI::App& app, Session& session) {
  const auto options = std::make_shared<QueryOptions>();
  CLI::App& command = *app.add_subcommand("query", "Ask about points, a segment or a direction");
  addInputs(command, options->input);
  addQuestions(command, *options);
  command.add_flag("--zero-inside", options->zeroInside,
                   "With --point and --points: the distance of a point\n"
                   "inside is 0");
  command.add_flag("--end-touches", options->endTouches,
                   "With --segment: include edges that pass through an\n"
                   "end of the segment");
  addHoles(command, options->withHoles);
  addRowFormats(command, options->rows);
  command.footer(queryHelp);
  command.callback([options, &session] { query(*options, session); });
}

}  // namespace tool
