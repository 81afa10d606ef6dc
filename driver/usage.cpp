// SPDX-License-Identifier: MIT
// The usage text, line by line.
#include "driver/usage.hpp"

#include <sstream>

namespace zirk {

namespace {

constexpr std::size_t textWidth = 69;

/// A line filled up with blanks to the width of the text.
std::string padded(std::string line) {
    line.resize(std::max(line.size(), textWidth), ' ');
    return line + '\n';
}

void writeOptions(std::ostream& out, const Settings& s) {
    out << "  -3       number of points in along x-axis for 3D function (gnuplot)\n"
        << "           0=create output for 2D function (default " << s.points3D << ")\n"
        << "  -A       print all values for 3D (0=only for T=Tmax) (default " << s.all3DValues << ")\n"
        << "  -a       sets accuracy (default " << s.accuracy << ")\n"
        << "  -d       dumps tree of equations (0/1) (default " << s.dumpTree << ")\n"
        << "  -D       dumps 1:DY values 2:derivatives 3:both (default " << s.dumpDY << ")\n"
        << "  -f       use fixed step (0/1) (default " << s.fixedStep << " & step=" << s.step << ")\n"
        << "  -F       print results (0:all),(-:x vals in <0;Tmax>,\n"
        << "           (+:vals for t=i*x) (default: " << s.printEvery << ")\n"
        << "  -G       filename for generated gnuplot .sh (default " << s.gnuplotFile << ")\n"
        << "  -g       output for gnuplot, choose output (default " << s.gnuplotOutput << ")\n"
        << "  -i       simplify very small numbers (1/0) (default " << s.simplifySmall << ")\n"
        << "  -L       print only the results for t=Tmax (1/0) (default " << s.printOnlyTmax << ")\n"
        << "  -o       sets maximum order (default " << s.maxOrder << ")\n"
        << "  -p       sets precision of printing (default " << s.printPrecision << " chars)\n"
        << "  -r       watch for periodicals; format=eq_name:#_same_vals:1st_deriv.\n"
        << "  -R       size of buffer for detection of periodicals (default " << s.periodicBuffer << ")\n"
        << "  -s       sets initial step size (default " << s.step << ")\n"
        << "  -S       stop computation when steady state is reached (def. " << s.steadyStop << ")\n"
        << "  -t       sets maximum time Tmax (default " << s.tMax << ")\n"
        << "  -U       use all Taylor series terms set by -o (default " << s.useAllTerms << ")\n"
        << "  -v       print version number and exit\n"
        << "  -w       sets width for output of numbers (default " << s.printWidth << ")\n"
        << "  -x       DY exponents difference-stiffness detection (default " << s.stiffExpDiff << ")\n"
        << "  -X       whether to detect stiff system every step (default " << s.stiffEveryStep << ")\n"
        << "  -z       sets number of zero Taylor terms (default " << s.zeroTerms << ")\n"
        << '\n'
        << "  -O       print column ORDER (1/0) (default " << s.printOrderColumn << ")\n"
        << "  -P str   print the equations in the string 'str'. The string has \n"
        << "           the following form:\n"
        << "                 name1:name2:name3:...:\n"
        << "           where nameX are names of the equations. Note the presence\n"
        << "           of the colon after the last name\n"
        << "  -N str   do not print the equations in the string 'str'\n"
        << "  -T       print temporary equations (1/0) (default " << s.printTempEquations << ")\n";
}

}  // namespace

std::string usageText(const Settings& settings) {
    std::ostringstream out;
    out << "ZIRK/C  1.0  (" << __DATE__ << ")" << std::string(39, ' ') << '\n'
        << std::string(textWidth, '-') << '\n'
        << " zirk [-3 number] [-A {1|0}] [-a number] [-d {1|0}] [-D {1|0}]       \n"
        << "      [-f {1|0}]  [-F {0|1|2|3}] [-G filename] [-g {x11|fig|png|gif|...}]\n"
        << "      [-i {1|0}]  [-L {1|0}]  [-o number] [-p number] [-s number] \n"
        << "      [-S number] [-t number] [-U {1|0}] [-v] [-w number] [-x number] [-z number]        \n"
        << "      [-O {1|0}] [-P {eqName:}+] [-N {eqName:}+] [-T {1|0}] [file]  \n"
        << '\n'
        << padded("Options:");
    writeOptions(out, settings);
    for (const char* line : {"", "Example of an input:", "  y1'= t  & 0;", "  y2'= y1 & 1;", "", "Execution:",
                             " zirk -g png -P y2: in.zirk > output.sh &&. output.sh", "", "'t' is reserved for time",
                             "", "It is possible to setup several parameters in ~/.zirkrc file!", ""}) {
        out << padded(line);
    }
    return out.str();
}

}  // namespace zirk
