// SPDX-License-Identifier: MIT
// The table of options, and how the text of each becomes part of the request.
#include "solve/option_table.hpp"

#include <cerrno>
#include <cstdlib>

#include "solve/comma_list.hpp"
#include "solve/failure.hpp"
#include "solve/plot_script.hpp"

namespace zirk::solve {

namespace {

constexpr std::uint64_t mostRows = 1000000000000;
constexpr std::uint64_t mostDigits = 21;
constexpr std::uint64_t mostThreads = 4096;

std::uint64_t wholeNumber(const char* option, const std::string& text, std::uint64_t most) {
    errno = 0;
    char* end = nullptr;
    const bool isPlain = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
    const unsigned long long number = isPlain ? std::strtoull(text.c_str(), &end, 10) : 0;
    if (number < 1 || number > most || errno == ERANGE) {
        throw UsageError(std::string(option) + " takes a whole number from 1 to " + std::to_string(most) + ", not \"" +
                         text + '"');
    }
    return number;
}

/// "EXPR", "EXPR:up" or "EXPR:down".
Watched watched(const std::string& text) {
    const std::size_t colon = text.rfind(':');
    const std::string which = colon == std::string::npos ? "" : text.substr(colon + 1);
    if (which == "up") return {text.substr(0, colon), Crossing::Up};
    if (which == "down") return {text.substr(0, colon), Crossing::Down};
    return {text, Crossing::Any};
}

void addSetting(Request& request, const std::string& text) {
    const std::size_t equals = text.find('=');
    const std::string name = trimmed(text.substr(0, equals));
    if (equals == std::string::npos || name.empty()) {
        throw UsageError("--set takes NAME=VALUE, not \"" + text + '"');
    }
    request.settings.push_back({name, text.substr(equals + 1)});
}

Format formatOf(const std::string& text) {
    if (text == "table") return Format::Table;
    if (text == "csv") return Format::Csv;
    if (text == "tsv") return Format::Tsv;
    if (text == "json") return Format::Json;
    throw UsageError("--format takes table, csv, tsv or json, not \"" + text + '"');
}

using R = Request;
using Text = const std::string&;

}  // namespace

// clang-format off
const std::vector<OptionRow>& optionRows() {
    static const std::vector<OptionRow> rows = {
        {'t', "end", "T", [](R& r, Text a) { r.end = a; },
         "end time (default 1); less than the start runs backwards"},
        {0, "start", "T", [](R& r, Text a) { r.start = a; },
         "time of the start values (default 0)"},
        {'e', "tolerance", "E", [](R& r, Text a) { r.tolerance = a; },
         "error per step relative to the size of the solution,\n1e-18 (default) to 0.1"},
        {0, "max-step", "H", [](R& r, Text a) { r.maxStep = a; },
         "longest step"},
        {'s', "set", "NAME=VALUE", [](R& r, Text a) { addSetting(r, a); },
         "replaces a definition or a start value (y=..., y'=...)\nby an expression of constants; repeatable"},
        {'n', "rows", "N", [](R& r, Text a) { r.rows = wholeNumber("--rows", a, mostRows); },
         "rows at the ends of N equal intervals (default 10)"},
        {0, "every", "DT", [](R& r, Text a) { r.every = a; },
         "a row every DT, and at the end"},
        {0, "at", "T1,T2,...", [](R& r, Text a) { r.at = commaList(a); },
         "rows at these times"},
        {0, "steps", nullptr, [](R& r, Text) { r.steps = true; },
         "a row at the start and at the end of every step"},
        {0, "last", nullptr, [](R& r, Text) { r.last = true; },
         "the last row alone"},
        {0, "until", "EXPR", [](R& r, Text a) { r.until.push_back(watched(a)); },
         "ends where EXPR becomes 0, with a row there;\nrepeatable, the first that is met ends the run"},
        {0, "crossings", "EXPR", [](R& r, Text a) { r.crossings.push_back(watched(a)); },
         "a row at every zero of EXPR, and no others unless asked\nfor; EXPR:up where it rises, EXPR:down where it falls;\nrepeatable"},
        {'c', "columns", "A,B,...", [](R& r, Text a) { r.columns = commaList(a); },
         "names and expressions to write, in this order\n(default t and all names of the text)"},
        {'f', "format", "FORMAT", [](R& r, Text a) { r.format = formatOf(a); },
         "table (default), csv, tsv, or json (one object a line)"},
        {'d', "digits", "N", [](R& r, Text a) { r.digits = static_cast<int>(wholeNumber("--digits", a, mostDigits)); },
         "significant digits, 1 to 21 (default 15)"},
        {'p', "plot", "FILE", [](R& r, Text a) { (void)pictureOf(a); r.plot = a; },
         "draws the columns with gnuplot into an svg, png or pdf\nfile instead of writing rows"},
        {0, "plot-x", "EXPR", [](R& r, Text a) { r.plotX = trimmed(a); },
         "what --plot draws along its x axis\n(default the first column)"},
        {'j', "threads", "N", [](R& r, Text a) { r.threads = wholeNumber("--threads", a, mostThreads); },
         "uses up to N threads; the results are the same"},
        {'q', "quiet", nullptr, [](R& r, Text) { r.quiet = true; },
         "no warnings and no progress line"},
        {'v', "verbose", nullptr, [](R& r, Text) { r.verbose = true; },
         "tells at the end about steps, orders and time"},
        {0, "explain", nullptr, [](R& r, Text) { r.task = Task::Explain; },
         "shows the system as it is solved, and exits"},
        {'h', "help", nullptr, [](R& r, Text) { r.task = Task::Help; },
         "shows this text, and exits"},
        {'V', "version", nullptr, [](R& r, Text) { r.task = Task::Version; },
         "shows the version, and exits"},
    };
    return rows;
}
// clang-format on

}  // namespace zirk::solve
