// SPDX-License-Identifier: MIT
// Workloads from their table, their points, and the count of their multiply-adds.
#include "bench/workload.hpp"

#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <unordered_map>
#include <unordered_set>

#include "driver/options.hpp"
#include "lang/compiler.hpp"

using namespace zirk;

namespace {

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string> words(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> result;
    for (std::string word; in >> word;) result.push_back(word);
    return result;
}

/// Options into settings; the input that they name.
std::unique_ptr<std::istream> parse(int argc, char** argv, Settings& settings) {
    Output output(1, 2);
    settings.reset();
    return parseOptions(argc, argv, settings, output).input;
}

std::size_t readFrom(std::istream& input, char* buffer, std::size_t size) {
    input.read(buffer, static_cast<std::streamsize>(size));
    return static_cast<std::size_t>(input.gcount());
}

}  // namespace

std::vector<WorkloadLine> readWorkloads(const std::string& folder) {
    std::ifstream in(folder + "/workloads");
    std::vector<WorkloadLine> lines;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream fields(line);
        WorkloadLine workload;
        std::getline(fields, workload.name, '|');
        std::getline(fields, workload.model, '|');
        std::getline(fields, workload.options, '|');
        lines.push_back({trimmed(workload.name), trimmed(workload.model), trimmed(workload.options)});
    }
    if (lines.empty()) throw std::runtime_error("no workloads in " + folder);
    return lines;
}

std::string modelText(const std::string& folder, const std::string& arguments) {
    std::FILE* pipe = popen((folder + "/model " + arguments).c_str(), "r");
    if (pipe == nullptr) throw std::runtime_error("cannot run " + folder + "/model");
    std::string text;
    char block[4096];
    for (std::size_t n = 0; (n = std::fread(block, 1, sizeof block, pipe)) > 0;) text.append(block, n);
    if (pclose(pipe) != 0) throw std::runtime_error("no model " + arguments);
    return text;
}

Workload::Workload(int argc, char** argv, Evaluation evaluation) {
    Settings settings;
    const auto input = parse(argc, argv, settings);
    prepare(*input, settings.classic, evaluation);
}

Workload::Workload(const std::string& options, const std::string& text, Evaluation evaluation) {
    std::vector<std::string> arguments = words("zirk " + options);
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    Settings settings;
    parse(static_cast<int>(arguments.size()), argv.data(), settings);
    // Goes on for ever: what a benchmark of single points needs.
    settings.classic.tMax = 1e300;
    std::istringstream input(text);
    prepare(input, settings.classic, evaluation);
}

void Workload::prepare(std::istream& input, const ClassicOptions& options, Evaluation evaluation) {
    auto compiled = std::make_unique<CompiledSystem>(options.limits, options.step);
    {
        const Calculus::Scope scope(compiled->calculus);
        Compiler([&](char* buffer, std::size_t size) { return readFrom(input, buffer, size); }, compiled->system)
            .compile();
    }
    run_ = std::make_unique<ClassicRun>(std::move(compiled), options, nullptr, evaluation);
}

bool Workload::nextPoint() {
    for (;;) {
        const ClassicIntegrator::Pass pass = run_->next();
        if (pass == ClassicIntegrator::Pass::End) return false;
        if (counting_) count();
        if (pass == ClassicIntegrator::Pass::Point) return true;
    }
}

void Workload::countMultiplyAdds() {
    counting_ = true;
    std::unordered_map<const Expr*, std::size_t> indices;
    const std::vector<Differential*>& variables = run_->equations().list();
    for (std::size_t i = 0; i < variables.size(); ++i) {
        const Differential& variable = *variables[i];
        if (isAlgebraic(variable)) continue;
        Sums sums{i, {}};
        std::unordered_set<const Expr*> seen;
        std::vector<const Expr*> pending{variable.rightHandSide().get()};
        while (!pending.empty()) {
            const Expr* node = pending.back();
            pending.pop_back();
            if (!seen.insert(node).second) continue;
            if (node->type() == ExprType::Multiply || node->type() == ExprType::Divide) {
                const auto [place, isNew] = indices.emplace(node, kinds_.size());
                if (isNew) kinds_.push_back(node->type());
                sums.nodes.push_back(place->second);
            }
            for (int k = 0; node->operand(k) != nullptr; ++k) pending.push_back(node->operand(k));
        }
        sums_.push_back(sums);
    }
}

void Workload::count() {
    // A variable whose highest term is n asks its right-hand side for the terms 0 to n - 1.
    terms_.assign(kinds_.size(), 0);
    for (const Sums& sums : sums_) {
        const int terms = run_->taylor().highestTerm(sums.user);
        for (const std::size_t node : sums.nodes) terms_[node] = std::max(terms_[node], terms);
    }
    for (std::size_t i = 0; i < kinds_.size(); ++i) {
        const long long n = terms_[i];
        literal_ += kinds_[i] == ExprType::Multiply ? n * (n + 1) / 2 : n * (n - 1) / 2;
    }
}
