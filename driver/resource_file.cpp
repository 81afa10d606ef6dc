// SPDX-License-Identifier: MIT
// The keywords and the narrow syntax of the resource file.
#include "driver/resource_file.hpp"

#include <cctype>
#include <cstdlib>
#include <fstream>
#include <ostream>

namespace zirk {

namespace {

struct Keyword {
    const char* name;
    /// Printed before the value when the setting is made.
    const char* echo;
    void (*apply)(Settings& settings, const char* value);
};

constexpr Keyword keywords[] = {
    {"TMAX", "MaxTime = ", [](Settings& s, const char* v) { s.tMax = realFromText(v); }},
    {"MAXORDER", "MaxOrder = ", [](Settings& s, const char* v) { s.setOrder(intFromText(v)); }},
    {"PRINTORD", "Print order = ", [](Settings& s, const char* v) { s.printOrderColumn = flagFromText(v); }},
    {"ALL3DVALUES", "Print all values (3D) = ", [](Settings& s, const char* v) { s.all3DValues = flagFromText(v); }},
    {"ACCURACY", "Accuracy = ", [](Settings& s, const char* v) { s.accuracy = realFromText(v); }},
    {"DUMPTREE", "Dump tree = ", [](Settings& s, const char* v) { s.dumpTree = flagFromText(v); }},
    {"DUMPDY", "Dump DY values = ", [](Settings& s, const char* v) { s.dumpDY = intFromText(v); }},
    {"FIXEDSTEP", "Fixed int.step = ", [](Settings& s, const char* v) { s.fixedStep = flagFromText(v); }},
    {"GNUPLOT_FILENAME", "GnuPlot File = ", [](Settings& s, const char* v) { s.gnuplotFile = v; }},
    {"GNUPLOT_OUTPUT", "GnuPlot Output = ", [](Settings& s, const char* v) { s.setPlotTerminal(v); }},
    {"SIMPLIFYSMALLNUMBERS",
     "Ignore small numbers = ", [](Settings& s, const char* v) { s.simplifySmall = flagFromText(v); }},
    {"PRINTONLYTMAX", "Print only Tmax = ", [](Settings& s, const char* v) { s.printOnlyTmax = flagFromText(v); }},
    {"PRINTNUMCHARS",
     "Characters of number to print = ", [](Settings& s, const char* v) { s.printPrecision = intFromText(v); }},
    {"INITIALINTSTEP",
     "Initial step size = ", [](Settings& s, const char* v) { s.setStep(static_cast<double>(realFromText(v))); }},
    {"STOPSTEADYSTATE", "Step when steady solution is found = ",
     [](Settings& s, const char* v) { s.steadyStop = static_cast<unsigned>(intFromText(v)); }},
    {"PRINTNUMWIDTH", "Number digits to print = ", [](Settings& s, const char* v) { s.printWidth = intFromText(v); }},
    {"GMPWORDSIZE", nullptr, nullptr},
    {"ZEROTAYLORTERMS",
     "Number of Taylor terms equal to zero = ", [](Settings& s, const char* v) { s.setZeroTerms(intFromText(v)); }},
    {"PRINTTEMPQ",
     "Print temporary equations = ", [](Settings& s, const char* v) { s.printTempEquations = flagFromText(v); }},
    {"PRINTEVERYRESULT", "Print every result = ", [](Settings& s, const char* v) { s.printEvery = realFromText(v); }},
    {"STIFFSYSTEMDETECTEXPDIFF",
     "Stiff system detect exponent difference = ", [](Settings& s, const char* v) { s.stiffExpDiff = intFromText(v); }},
    {"USEALLTERMS", "Use all terms = ", [](Settings& s, const char* v) { s.useAllTerms = flagFromText(v); }},
    {"STIFFDETECTEVERYSTEP",
     "Stiff system detected every step  = ", [](Settings& s, const char* v) { s.stiffEveryStep = flagFromText(v); }},
};

const Keyword* findKeyword(const std::string& key) {
    for (const Keyword& keyword : keywords) {
        if (key == keyword.name) return &keyword;
    }
    return nullptr;
}

bool isSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

/// Without the comment and without blanks and tabs around it.
std::string stripped(const std::string& line) {
    const std::string text = line.substr(0, line.find_first_of("#%;"));
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// Upper-cased, white space dropped.
std::string keyOf(const std::string& text) {
    std::string key;
    for (const char c : text.substr(0, text.find_first_of(":="))) {
        if (!isSpace(c)) key += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return key;
}

/// Letters, digits and signs after the separator: a decimal point ends the value, on purpose.
std::string valueOf(const std::string& text) {
    const std::size_t separator = text.find_first_of(":=");
    if (separator == std::string::npos) return "";
    std::size_t begin = separator + 1;
    while (begin < text.size() && isSpace(text[begin])) ++begin;
    std::size_t end = begin;
    while (end < text.size() &&
           (std::isalnum(static_cast<unsigned char>(text[end])) != 0 || text[end] == '-' || text[end] == '+')) {
        ++end;
    }
    return text.substr(begin, end - begin);
}

}  // namespace

std::string resourceFilePath() {
    const char* home = std::getenv("HOME");
    return std::string(home != nullptr ? home : ".") + "/.zirkrc";
}

void readResourceFile(const std::string& path, Settings& settings, std::ostream& log) {
    std::ifstream file(path);
    int number = 0;
    for (std::string line; std::getline(file, line);) applyResourceLine(line, ++number, settings, log);
}

void applyResourceLine(const std::string& line, int number, Settings& settings, std::ostream& log) {
    const std::string text = stripped(line);
    if (text.empty()) return;
    const std::string key = keyOf(text);
    const Keyword* keyword = findKeyword(key);
    if (keyword == nullptr) {
        log << "(WARN) Invalid keyword in rc file, line " << number << ": '" << key << "'\n";
        return;
    }
    const std::string value = valueOf(text);
    if (value.empty()) {
        log << "(WARN) No value set for option '" << key << "' in rc file.\n";
        return;
    }
    if (keyword->apply == nullptr) {
        log << "#(WARN) Option 'GMPWordSize' not supported in 'simple number precision' version\n";
        return;
    }
    keyword->apply(settings, value.c_str());
    log << "#(RES_SET) " << keyword->echo << value << '\n';
}

}  // namespace zirk
