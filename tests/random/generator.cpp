// SPDX-License-Identifier: MIT
// What is drawn, and how often.
#include "tests/random/generator.hpp"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <map>

namespace random_systems {

namespace {

class Generator {
public:
    explicit Generator(unsigned seed) : engine_(seed) {}

    System make() {
        makeNames();
        for (std::size_t i = 0; i < system_.names.size(); ++i) addEquation(i);
        addOptions();
        return system_;
    }

private:
    using Choice = std::initializer_list<const char*>;

    /// Uniform in 0 .. n - 1, the same on every machine.
    unsigned below(unsigned n) { return static_cast<unsigned>(engine_() % n); }
    bool oneIn(unsigned n) { return below(n) == 0; }
    std::string oneOf(Choice choice) { return *(choice.begin() + below(static_cast<unsigned>(choice.size()))); }

    void makeNames() {
        const unsigned count = 1 + below(6);
        std::string ends = "abcdefgh";
        for (unsigned i = 0; i < count; ++i) {
            const std::size_t end = below(static_cast<unsigned>(ends.size()));
            system_.names.push_back(oneOf({"Q_", "R_", "_", "Z9_", "A_B_", "m_"}) + ends[end]);
            ends.erase(end, 1);
        }
        std::sort(system_.names.begin(), system_.names.end());
        for (unsigned i = 0; i < count; ++i) orders_.push_back(oneIn(4) ? 0 : oneIn(5) ? 2 + below(3) : 1);
    }

    std::string constant() {
        // Zeros of both signs, infinities and not-a-numbers come from operations: the language has no words for them.
        if (oneIn(25)) return oneOf({"(1/0)", "(-1/0)", "(0/0)", "(-0)", "1e308*1e308", "1e-308*1e-308", "sqrt(-1)"});
        return oneOf({"0", "1", "2", "3", "0.5", "0.1", "-1", "-2", "7", "1.5e-3", "12.25", "100", "1e-9", "pi"});
    }

    std::string leaf() {
        if (oneIn(4)) return "t";
        if (oneIn(3)) return "(" + constant() + ")";
        if (oneIn(60)) return "missing";
        const std::size_t i = below(static_cast<unsigned>(system_.names.size()));
        const unsigned primes = orders_[i] > 1 ? below(orders_[i]) : 0;
        return system_.names[i] + std::string(primes, '\'');
    }

    std::string expression(unsigned depth) {
        if (depth == 0 || oneIn(4)) return leaf();
        if (oneIn(6)) {
            const std::string function =
                oneIn(40) ? oneOf({"acos", "asinh", "acosh"})
                          : oneOf({"sin", "cos", "tan", "cotan", "asin", "atan", "acotan", "sinh", "cosh", "tanh",
                                   "atanh", "cotanh", "argcotanh", "sqrt", "exp", "ln", "trunc"});
            return function + "(" + expression(depth - 1) + ")";
        }
        if (oneIn(8)) return "-(" + expression(depth - 1) + ")";
        const std::string left = expression(depth - 1);
        const std::string operation = oneOf({"+", "-", "*", "+", "-", "*", "/"});
        return "(" + left + operation + expression(depth - 1) + ")";
    }

    void addEquation(std::size_t i) {
        const std::string& name = system_.names[i];
        if (orders_[i] == 0) {
            system_.statements.push_back(name + " = " + expression(2) + ";");
            return;
        }
        // A part that damps keeps many systems solvable.
        const std::string rate = oneIn(3) ? expression(3) : "-" + name + " + 0.1*(" + expression(2) + ")";
        system_.statements.push_back(name + "'" + std::to_string(orders_[i]) + " = " + rate + " & " + constant() + ";");
        for (unsigned k = 1; k < orders_[i]; ++k) {
            if (oneIn(2)) system_.statements.push_back(name + "'" + std::to_string(k) + "(0) = " + constant() + ";");
        }
    }

    void add(char letter, unsigned rarity, Choice choice) {
        if (oneIn(rarity)) system_.options.emplace_back(letter, oneOf(choice));
    }

    void addOptions() {
        // Most runs shall end soon.
        system_.options.emplace_back('t', oneOf({"0.3", "1", "2.5", "7", "0.7"}));
        add('t', 25, {"0", "-1", "inf", "nan", "1e-300", "1e300", "text"});
        add('s', 4, {"0.1", "0.05", "0.3", "1", "10"});
        add('s', 40, {"0", "-1", "inf", "nan", "1e-5"});
        add('f', 5, {"0", "1", "1"});
        add('o', 5, {"5", "10", "20", "60", "200"});
        add('o', 40, {"0", "1", "-1", "2147483647", "-2147483648"});
        add('z', 6, {"1", "2", "3", "8"});
        add('z', 40, {"0", "-1", "200", "-2147483648"});
        add('a', 5, {"1e-6", "1e-15", "1e-3", "1e-18"});
        add('a', 40, {"0", "-1", "1", "inf", "nan"});
        add('U', 6, {"0", "1", "1"});
        add('D', 6, {"0", "1", "2", "3", "-1"});
        add('d', 8, {"0", "1"});
        add('T', 5, {"0", "1", "1"});
        add('S', 20, {"1", "2", "3", "-1"});
        if (oneIn(15)) system_.options.emplace_back('r', oneOfNames() + oneOf({":1:0", ":0:0", ":3", ""}));
        add('R', 30, {"0", "1", "2", "1000"});
        if (oneIn(6)) system_.options.emplace_back('P', oneOfNames() + ":" + (oneIn(2) ? oneOfNames() + ":" : ""));
        if (oneIn(8)) system_.options.emplace_back('N', oneOfNames() + ":");
        add('w', 4, {"0", "8", "25", "-3", "40"});
        add('p', 3, {"0", "1", "3", "16", "18", "19", "25", "40", "-1"});
        add('F', 6, {"0", "0.5", "-3", "-10", "1e-3", "nan", "inf"});
        add('O', 8, {"0", "1"});
        add('L', 12, {"0", "1"});
        add('X', 8, {"0", "1"});
        add('x', 8, {"0", "5", "-1", "2147483647"});
        add('i', 8, {"0", "1"});
        add('3', 20, {"1", "2", "3"});
        add('A', 20, {"1"});
    }

    std::string oneOfNames() { return system_.names[below(static_cast<unsigned>(system_.names.size()))]; }

    std::mt19937 engine_;
    System system_;
    /// Per name: the order of its derivative, 0 for an algebraic equation.
    std::vector<unsigned> orders_;
};

}  // namespace

std::string System::text() const {
    std::string text;
    for (const std::string& statement : statements) text += statement + "\n";
    return text;
}

std::vector<std::string> System::arguments() const {
    std::vector<std::string> arguments;
    for (const auto& [letter, argument] : options) {
        arguments.push_back(std::string("-") + letter);
        arguments.push_back(argument);
    }
    return arguments;
}

std::string System::option(char letter, const std::string& otherwise) const {
    std::string found = otherwise;
    for (const auto& [key, argument] : options) {
        if (key == letter) found = argument;
    }
    return found;
}

System makeSystem(unsigned seed) { return Generator(seed).make(); }

std::vector<std::string> otherNames(const System& system) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < system.names.size(); ++i) names.push_back("v_" + std::to_string(i) + "_w");
    return names;
}

std::string renamed(const std::string& text, const std::vector<std::string>& from, const std::vector<std::string>& to) {
    std::map<std::string, std::string> names;
    for (std::size_t i = 0; i < from.size(); ++i) names[from[i]] = to[i];
    const auto isWord = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; };
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at;
        while (end < text.size() && isWord(text[end])) ++end;
        const std::string word = text.substr(at, end - at);
        const auto name = names.find(word);
        result += name != names.end() ? name->second : word;
        if (end < text.size()) result += text[end++];
        at = end;
    }
    return result;
}

System renamed(const System& system) {
    System other = system;
    other.names = otherNames(system);
    for (std::string& statement : other.statements) statement = renamed(statement, system.names, other.names);
    for (auto& [letter, argument] : other.options) {
        if (letter == 'P' || letter == 'N' || letter == 'r') argument = renamed(argument, system.names, other.names);
    }
    return other;
}

System shuffled(const System& system, unsigned seed) {
    System other = system;
    std::mt19937 engine(seed);
    for (std::size_t i = other.statements.size(); i > 1; --i) {
        std::swap(other.statements[i - 1], other.statements[engine() % i]);
    }
    return other;
}

}  // namespace random_systems
