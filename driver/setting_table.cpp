// SPDX-License-Identifier: MIT
// The table of settings.
#include "driver/setting_table.hpp"

#include <ostream>

#include "text/from_text.hpp"

namespace zirk {

namespace {

/// Text before the first ":", which is removed with it; without a ":" all of the text.
std::string takePart(std::string& text) {
    const std::size_t colon = text.find(':');
    std::string part = text.substr(0, colon);
    text = colon == std::string::npos ? "" : text.substr(colon + 1);
    return part;
}

void setPeriod(PeriodOptions& period, std::string text) {
    period.periodicName = takePart(text);
    period.periodicCount = intFromText(takePart(text).c_str());
    period.periodicDeriv = realFromText(text.c_str());
    if (period.periodicName.empty()) period.periodicCount = 0;
}

/// The value passes through double precision.
void setStep(ClassicOptions& classic, const char* text) { classic.step = static_cast<double>(realFromText(text)); }

using Out = std::ostream;
using S = Settings;
constexpr auto integer = SettingRow::Value::Integer;
constexpr auto decimal = SettingRow::Value::Real;
constexpr auto text = SettingRow::Value::Text;

}  // namespace

// clang-format off
const std::vector<SettingRow>& settingRows() {
    static const std::vector<SettingRow> rows = {
        {'3', nullptr, nullptr, integer, [](S& s, const char* a) { s.layout.points3D = intFromText(a); },
         "  -3       number of points in along x-axis for 3D function (gnuplot)\n"
         "           0=create output for 2D function (default ",
         [](Out& out, const S& s) { out << s.layout.points3D; }, ")"},
        {'A', "ALL3DVALUES", "Print all values (3D) = ", integer,
         [](S& s, const char* a) { s.layout.all3DValues = flagFromText(a); },
         "  -A       print all values for 3D (0=only for T=Tmax) (default ",
         [](Out& out, const S& s) { out << s.layout.all3DValues; }, ")"},
        {'a', "ACCURACY", "Accuracy = ", decimal,
         [](S& s, const char* a) { s.classic.limits.accuracy = realFromText(a); },
         "  -a       sets accuracy (default ",
         [](Out& out, const S& s) { out << s.classic.limits.accuracy; }, ")"},
        {'d', "DUMPTREE", "Dump tree = ", integer, [](S& s, const char* a) { s.dumpTree = flagFromText(a); },
         "  -d       dumps tree of equations (0/1) (default ",
         [](Out& out, const S& s) { out << s.dumpTree; }, ")"},
        {'D', "DUMPDY", "Dump DY values = ", integer, [](S& s, const char* a) { s.dumpDY = intFromText(a); },
         "  -D       dumps 1:DY values 2:derivatives 3:both (default ",
         [](Out& out, const S& s) { out << s.dumpDY; }, ")"},
        {'f', "FIXEDSTEP", "Fixed int.step = ", integer,
         [](S& s, const char* a) { s.classic.fixedStep = flagFromText(a); },
         "  -f       use fixed step (0/1) (default ",
         [](Out& out, const S& s) { out << s.classic.fixedStep << " & step=" << s.classic.step; }, ")"},
        {'F', "PRINTEVERYRESULT", "Print every result = ", decimal,
         [](S& s, const char* a) { s.rows.printEvery = realFromText(a); },
         "  -F       print results (0:all),(-:x vals in <0;Tmax>,\n"
         "           (+:vals for t=i*x) (default: ",
         [](Out& out, const S& s) { out << s.rows.printEvery; }, ")"},
        {'G', "GNUPLOT_FILENAME", "GnuPlot File = ", text, [](S& s, const char* a) { s.plot.gnuplotFile = a; },
         "  -G       filename for generated gnuplot .sh (default ",
         [](Out& out, const S& s) { out << s.plot.gnuplotFile; }, ")"},
        {'g', "GNUPLOT_OUTPUT", "GnuPlot Output = ", text, [](S& s, const char* a) { s.setPlotTerminal(a); },
         "  -g       output for gnuplot, choose output (default ",
         [](Out& out, const S& s) { out << s.layout.gnuplotOutput; }, ")"},
        {'i', "SIMPLIFYSMALLNUMBERS", "Ignore small numbers = ", integer,
         [](S& s, const char* a) { s.classic.limits.simplifySmall = flagFromText(a); },
         "  -i       simplify very small numbers (1/0) (default ",
         [](Out& out, const S& s) { out << s.classic.limits.simplifySmall; }, ")"},
        {'L', "PRINTONLYTMAX", "Print only Tmax = ", integer,
         [](S& s, const char* a) { s.rows.printOnlyTmax = flagFromText(a); },
         "  -L       print only the results for t=Tmax (1/0) (default ",
         [](Out& out, const S& s) { out << s.rows.printOnlyTmax; }, ")"},
        {'o', "MAXORDER", "MaxOrder = ", integer, [](S& s, const char* a) { s.classic.limits.setOrder(intFromText(a)); },
         "  -o       sets maximum order (default ",
         [](Out& out, const S& s) { out << s.classic.limits.maxOrder; }, ")"},
        {'p', "PRINTNUMCHARS", "Characters of number to print = ", integer,
         [](S& s, const char* a) { s.numbers.printPrecision = intFromText(a); },
         "  -p       sets precision of printing (default ",
         [](Out& out, const S& s) { out << s.numbers.printPrecision; }, " chars)"},
        {'r', nullptr, nullptr, text, [](S& s, const char* a) { setPeriod(s.classic.period, a); },
         "  -r       watch for periodicals; format=eq_name:#_same_vals:1st_deriv.", [](Out&, const S&) {}, ""},
        {'R', nullptr, nullptr, integer, [](S& s, const char* a) { s.classic.period.periodicBuffer = intFromText(a); },
         "  -R       size of buffer for detection of periodicals (default ",
         [](Out& out, const S& s) { out << s.classic.period.periodicBuffer; }, ")"},
        {'s', "INITIALINTSTEP", "Initial step size = ", decimal, [](S& s, const char* a) { setStep(s.classic, a); },
         "  -s       sets initial step size (default ",
         [](Out& out, const S& s) { out << s.classic.step; }, ")"},
        {'S', "STOPSTEADYSTATE", "Step when steady solution is found = ", integer,
         [](S& s, const char* a) { s.classic.limits.steadyStop = static_cast<unsigned>(intFromText(a)); },
         "  -S       stop computation when steady state is reached (def. ",
         [](Out& out, const S& s) { out << s.classic.limits.steadyStop; }, ")"},
        {'t', "TMAX", "MaxTime = ", decimal, [](S& s, const char* a) { s.classic.tMax = realFromText(a); },
         "  -t       sets maximum time Tmax (default ",
         [](Out& out, const S& s) { out << s.classic.tMax; }, ")"},
        {'U', "USEALLTERMS", "Use all terms = ", integer,
         [](S& s, const char* a) { s.classic.limits.useAllTerms = flagFromText(a); },
         "  -U       use all Taylor series terms set by -o (default ",
         [](Out& out, const S& s) { out << s.classic.limits.useAllTerms; }, ")"},
        {'v', nullptr, nullptr, text, nullptr,
         "  -v       print version number and exit", [](Out&, const S&) {}, ""},
        {'w', "PRINTNUMWIDTH", "Number digits to print = ", integer,
         [](S& s, const char* a) { s.numbers.printWidth = intFromText(a); },
         "  -w       sets width for output of numbers (default ",
         [](Out& out, const S& s) { out << s.numbers.printWidth; }, ")"},
        {'x', "STIFFSYSTEMDETECTEXPDIFF", "Stiff system detect exponent difference = ", integer,
         [](S& s, const char* a) { s.classic.stiffness.stiffExpDiff = intFromText(a); },
         "  -x       DY exponents difference-stiffness detection (default ",
         [](Out& out, const S& s) { out << s.classic.stiffness.stiffExpDiff; }, ")"},
        {'X', "STIFFDETECTEVERYSTEP", "Stiff system detected every step  = ", integer,
         [](S& s, const char* a) { s.classic.stiffness.stiffEveryStep = flagFromText(a); },
         "  -X       whether to detect stiff system every step (default ",
         [](Out& out, const S& s) { out << s.classic.stiffness.stiffEveryStep; }, ")"},
        {'z', "ZEROTAYLORTERMS", "Number of Taylor terms equal to zero = ", integer,
         [](S& s, const char* a) { s.classic.limits.setZeroTerms(intFromText(a)); },
         "  -z       sets number of zero Taylor terms (default ",
         [](Out& out, const S& s) { out << s.classic.limits.zeroTerms; }, ")"},
        {'O', "PRINTORD", "Print order = ", integer,
         [](S& s, const char* a) { s.layout.printOrderColumn = flagFromText(a); },
         "\n  -O       print column ORDER (1/0) (default ",
         [](Out& out, const S& s) { out << s.layout.printOrderColumn; }, ")"},
        {'P', nullptr, nullptr, text, [](S& s, const char* a) { s.selection.printList = a; },
         "  -P str   print the equations in the string 'str'. The string has \n"
         "           the following form:\n"
         "                 name1:name2:name3:...:\n"
         "           where nameX are names of the equations. Note the presence\n"
         "           of the colon after the last name", [](Out&, const S&) {}, ""},
        {'N', nullptr, nullptr, text, [](S& s, const char* a) { s.selection.noPrintList = a; },
         "  -N str   do not print the equations in the string 'str'", [](Out&, const S&) {}, ""},
        {'T', "PRINTTEMPQ", "Print temporary equations = ", integer,
         [](S& s, const char* a) { s.layout.printTempEquations = flagFromText(a); },
         "  -T       print temporary equations (1/0) (default ",
         [](Out& out, const S& s) { out << s.layout.printTempEquations; }, ")"},
        {0, "GMPWORDSIZE", nullptr, integer, nullptr, nullptr, nullptr, nullptr},
    };
    return rows;
}
// clang-format on

const SettingRow* findOption(char letter) {
    for (const SettingRow& row : settingRows()) {
        if (row.letter == letter && row.apply != nullptr) return &row;
    }
    return nullptr;
}

const SettingRow* findKeyword(const std::string& keyword) {
    for (const SettingRow& row : settingRows()) {
        if (row.keyword != nullptr && keyword == row.keyword) return &row;
    }
    return nullptr;
}

}  // namespace zirk
