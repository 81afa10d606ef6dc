// SPDX-License-Identifier: MIT
// Checks what needs no reference on random systems: random-systems PROGRAM PLAIN_PROGRAM [COUNT [SEED]]
//
// System i of a series is made from SEED + i alone, so that `... 1 N` repeats number N.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <set>
#include <sstream>
#include <stdexcept>

#include "tests/random/generator.hpp"
#include "tests/random/process.hpp"
#include "tests/random/table.hpp"

namespace random_systems {

namespace {

using Options = std::vector<std::pair<char, std::string>>;

[[noreturn]] void complain(const std::string& what) { throw std::runtime_error(what); }

/// Nothing when both agree as far as both go; the first difference otherwise.
void expectSame(const std::string& a, const std::string& b, bool wholly, const std::string& what) {
    const std::size_t common = std::min(a.size(), b.size());
    std::size_t at = 0;
    while (at < common && a[at] == b[at]) ++at;
    if (at == common && (!wholly || a.size() == b.size())) return;
    const std::size_t before = at == 0 ? std::string::npos : a.rfind('\n', at - 1);
    const std::size_t line = before == std::string::npos ? 0 : before + 1;
    complain(what + " differs:\n  " + a.substr(line, 300) + "\n  " + b.substr(line, 300));
}

class Checker {
public:
    Checker(std::string program, std::string plain) : program_(std::move(program)), plain_(std::move(plain)) {}

    /// std::runtime_error with the first property that does not hold.
    void check(unsigned seed) {
        system_ = makeSystem(seed);
        base_ = run(program_, system_.arguments(), system_.text());
        checkEnd(base_);
        if (base_.status == 0 && !base_.cut) ++normal_;
        compare("the plain evaluation", run(plain_, system_.arguments(), system_.text()));
        if (base_.cut) {
            ++cut_;
            return;
        }
        compare("a second run", run(program_, system_.arguments(), system_.text()));
        const System other = renamed(system_);
        compareRenamed(run(program_, other.arguments(), other.text()), other.names);
        const System mixed = shuffled(system_, seed);
        compare("another order of statements", run(program_, mixed.arguments(), mixed.text()));
        checkDumps();
        const bool isMatrix = std::atoi(system_.option('3', "0").c_str()) >= 1;
        if (base_.status != 0 || isMatrix) return;
        ++complete_;
        checkTables();
    }

    /// Runs that came to their end by themselves and without an error.
    unsigned normal() const { return normal_; }
    unsigned complete() const { return complete_; }
    unsigned cut() const { return cut_; }

    void describe(std::ostream& out) const {
        out << "  zirk";
        for (const std::string& word : system_.arguments()) out << ' ' << (word.empty() ? "''" : word);
        out << "\n" << system_.text();
    }

private:
    static void checkEnd(const Outcome& outcome) {
        const bool named = outcome.status == 0 || outcome.status == 1 || outcome.status == 3;
        if (!named && !outcome.cut) complain("status " + std::to_string(outcome.status) + "\n" + outcome.log);
        if (outcome.log.find("runtime error") != std::string::npos ||
            outcome.log.find("Sanitizer") != std::string::npos) {
            complain(outcome.log);
        }
        const bool told =
            outcome.log.find("(ERR) ") != std::string::npos || outcome.log.find("(COMP) ") != std::string::npos;
        if (outcome.status == 1 && !told && !outcome.cut) complain("status 1 without a message\n" + outcome.log);
    }

    void compare(const std::string& what, const Outcome& outcome) const {
        const bool wholly = !base_.cut && !outcome.cut;
        expectSame(base_.results, outcome.results, wholly, "the table of " + what);
        expectSame(base_.log, outcome.log, wholly, "the diagnostics of " + what);
        if (wholly && base_.status != outcome.status) complain("status of " + what);
    }

    void compareRenamed(const Outcome& outcome, std::vector<std::string> names) const {
        std::vector<std::string> before = system_.names;
        // The dumps put letters in front of names.
        for (const char* prefix : {"DY_", "d"}) {
            for (std::size_t i = 0; i < system_.names.size(); ++i) {
                before.push_back(prefix + system_.names[i]);
                names.push_back(prefix + names[i]);
            }
        }
        const bool wholly = !base_.cut && !outcome.cut;
        // Cut texts may end within a name.
        if (!wholly) return;
        expectSame(renamed(base_.results, before, names), outcome.results, wholly, "the table under other names");
        expectSame(renamed(base_.log, before, names), outcome.log, wholly, "the diagnostics under other names");
    }

    Outcome runWith(const Options& more) const {
        System system = system_;
        system.options.insert(system.options.end(), more.begin(), more.end());
        Outcome outcome = run(program_, system.arguments(), system.text());
        checkEnd(outcome);
        return outcome;
    }

    void checkDumps() const {
        const Outcome quiet = runWith({{'D', "0"}, {'d', "0"}});
        const Outcome loud = runWith({{'D', "3"}, {'d', "1"}});
        expectSame(base_.results, quiet.results, !base_.cut && !quiet.cut, "the table without dumps");
        expectSame(base_.results, loud.results, !base_.cut && !loud.cut, "the table beside dumps");
        if (quiet.cut || loud.cut) return;
        // What the dumps add is marked line by line.
        std::istringstream lines(loud.log);
        std::string rest;
        for (std::string line; std::getline(lines, line);) {
            const bool dump =
                line.rfind("#(DY) ", 0) == 0 || line.rfind("#(DER) ", 0) == 0 || line.rfind("#(TREEDUMP) ", 0) == 0;
            if (!dump) rest += line + "\n";
        }
        expectSame(quiet.log, rest, true, "the log beside dumps");
    }

    /// Every column of `part` stands in `whole` with the same cells, beside the same times.
    static void expectPart(const Table& part, const Table& whole, const std::string& what) {
        if (part.times != whole.times) complain("the times " + what);
        if (part.heads != whole.heads) complain("the orders " + what);
        for (const std::string& name : part.names) {
            const auto column = whole.columns.find(name);
            if (!part.times.empty() && (column == whole.columns.end() || column->second != part.columns.at(name))) {
                complain("column " + name + " " + what);
            }
        }
    }

    void checkTables() const {
        const Table table = readTable(base_.results);
        checkLastTime(table);
        const Outcome hidden = runWith({{'T', "0"}});
        const Outcome shown = runWith({{'T', "1"}});
        if (hidden.cut || shown.cut) return;
        expectPart(readTable(hidden.results), readTable(shown.results), "beside temporaries");

        const Outcome whole = runWith({{'P', ""}});
        if (whole.cut) return;
        const Table full = readTable(whole.results);
        expectPart(table, full, "of a selection");
        // Two lists that share the columns between them. Without "%": an entry of a derivative also selects
        // temporaries.
        std::string lists[2];
        std::size_t columns = 0;
        for (const std::string& name : full.names) {
            if (name.find('%') == std::string::npos) lists[columns++ % 2] += name + ":";
        }
        // An empty list selects everything.
        for (std::string& list : lists) list += "none:";
        std::set<std::string> seen;
        for (const std::string& list : lists) {
            const Outcome half = runWith({{'P', list}, {'T', "0"}});
            if (half.cut) return;
            const Table part = readTable(half.results);
            expectPart(part, full, "of the list " + list);
            for (const std::string& name : part.names) {
                if (!seen.insert(name).second) complain("column " + name + " is in both halves");
            }
        }
        if (seen.size() != columns) complain("the halves lack columns");
    }

    void checkLastTime(const Table& table) const {
        if (system_.option('S', "0") != "0" || system_.option('r', "").find(":") != std::string::npos) return;
        const long double end = std::strtod(system_.option('t', "1").c_str(), nullptr);
        const int precision = std::atoi(system_.option('p', "11").c_str());
        char text[200];
        std::snprintf(text, sizeof text, "%.*Le", precision < 0 ? 6 : precision, end);
        if (table.times.empty() || table.times.back() != text) complain(std::string("the run does not end at ") + text);
    }

    const std::string program_;
    const std::string plain_;
    System system_;
    Outcome base_;
    unsigned normal_ = 0;
    unsigned complete_ = 0;
    unsigned cut_ = 0;
};

}  // namespace

}  // namespace random_systems

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: random-systems PROGRAM PLAIN_PROGRAM [COUNT [SEED]]\n";
        return 2;
    }
    const unsigned count = argc > 3 ? static_cast<unsigned>(std::atol(argv[3])) : 300;
    const unsigned seed = argc > 4 ? static_cast<unsigned>(std::atol(argv[4])) : 1;
    // No resource file.
    setenv("HOME", "/nonexistent", 1);
    unsigned failed = 0;
    random_systems::Checker checker(argv[1], argv[2]);
    for (unsigned i = 0; i < count; ++i) {
        try {
            checker.check(seed + i);
        } catch (const std::exception& problem) {
            ++failed;
            std::cout << "system " << seed + i << ": " << problem.what() << '\n';
            checker.describe(std::cout);
        }
    }
    std::cout << count << " systems, " << checker.normal() << " ended normally, " << checker.complete()
              << " of them with a table, " << checker.cut() << " cut, " << failed
              << " with a property that does not hold\n";
    // Programs that fail alike on everything have all properties. A few systems may well end early, all of them.
    constexpr unsigned many = 50;
    if (count >= many && 4 * checker.normal() < count) {
        std::cout << "fewer than a quarter ended normally: the properties were hardly tried\n";
        return 1;
    }
    return failed == 0 ? 0 : 1;
}
