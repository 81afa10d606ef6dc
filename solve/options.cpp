// SPDX-License-Identifier: MIT
// The getopt loop, and which options exclude each other.
#include "solve/options.hpp"

#include <getopt.h>

#include <cstring>

#include "solve/failure.hpp"
#include "solve/option_table.hpp"
#include "solve/similar_name.hpp"

namespace zirk::solve {

namespace {

/// What getopt_long returns for the first row; larger than any letter.
constexpr int firstRow = 1000;

struct OptionsForGetopt {
    OptionsForGetopt() {
        int number = firstRow;
        for (const OptionRow& row : optionRows()) {
            const int argument = row.argument != nullptr ? required_argument : no_argument;
            longOptions.push_back({row.name, argument, nullptr, number++});
            if (row.letter == 0) continue;
            letters += row.letter;
            if (row.argument != nullptr) letters += ':';
        }
        longOptions.push_back({nullptr, 0, nullptr, 0});
    }

    /// A missing argument is told by its own sign.
    std::string letters = ":";
    std::vector<option> longOptions;
};

const OptionRow* findRow(int returned) {
    if (returned >= firstRow) return &optionRows()[static_cast<std::size_t>(returned - firstRow)];
    for (const OptionRow& row : optionRows()) {
        if (row.letter != 0 && row.letter == returned) return &row;
    }
    return nullptr;
}

/// `word`: as it was given, "--foo=3".
UsageError unknownOption(const std::string& word) {
    const std::string name = word.substr(2, word.find('=') - 2);
    std::vector<std::string> names;
    std::string meant;
    for (const OptionRow& row : optionRows()) {
        names.emplace_back(row.name);
        if (!name.empty() && std::strncmp(row.name, name.c_str(), name.size()) == 0) {
            meant += (meant.empty() ? "--" : ", --") + names.back();
        }
    }
    if (!meant.empty()) return UsageError("the option --" + name + " could be " + meant);
    const std::string similar = similarName(name, names);
    return UsageError("unknown option --" + name + (similar.empty() ? "" : "; did you mean --" + similar + "?"));
}

UsageError refused(int returned, const std::string& word) {
    const OptionRow* row = findRow(optopt);
    if (returned == ':')
        return UsageError(std::string("the option --") + row->name + " needs an argument, " + row->argument);
    if (row != nullptr && optopt >= firstRow)
        return UsageError(std::string("the option --") + row->name + " takes no argument");
    if (optopt == 0) return unknownOption(word);
    return UsageError(std::string("unknown option -") + static_cast<char>(optopt));
}

/// At most one of these.
void excludeEachOther(const std::vector<std::pair<bool, const char*>>& options) {
    const char* first = nullptr;
    for (const auto& [isGiven, name] : options) {
        if (!isGiven) continue;
        if (first != nullptr) throw UsageError(std::string(first) + " and " + name + " exclude each other");
        first = name;
    }
}

void checkTogether(const Request& r) {
    excludeEachOther({{r.rows.has_value(), "--rows"},
                      {r.every.has_value(), "--every"},
                      {r.at.has_value(), "--at"},
                      {r.steps, "--steps"},
                      {r.last, "--last"}});
    for (const auto& [isGiven, name] :
         {std::pair{r.last, "--last"}, {r.format.has_value(), "--format"}, {r.digits.has_value(), "--digits"}}) {
        excludeEachOther({{r.plot.has_value(), "--plot"}, {isGiven, name}});
    }
    if (r.plotX && !r.plot) throw UsageError("--plot-x needs --plot");
}

}  // namespace

Request readCommandLine(int argc, char** argv) {
    const OptionsForGetopt options;
    Request request;
    // 0 and not 1: starts afresh however often it is called.
    optind = 0;
    opterr = 0;
    for (;;) {
        const int returned = getopt_long(argc, argv, options.letters.c_str(), options.longOptions.data(), nullptr);
        if (returned == -1) break;
        // A long option stands just before the next word, also when it was moved before a file name.
        if (returned == '?' || returned == ':') throw refused(returned, argv[optind - 1]);
        findRow(returned)->apply(request, optarg != nullptr ? optarg : "");
        if (request.task == Task::Help || request.task == Task::Version) return request;
    }
    if (optind < argc) request.file = argv[optind++];
    if (optind < argc) throw UsageError(std::string("one file is enough, \"") + argv[optind] + "\" is too many");
    checkTogether(request);
    return request;
}

}  // namespace zirk::solve
