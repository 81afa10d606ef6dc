// SPDX-License-Identifier: MIT
// Texts compiled, and compiled again for further runs.
#include "zirk/model.hpp"

#include "lang/compiler.hpp"
#include "lang/model_content.hpp"

namespace zirk {

namespace {

Model::Source sourceOf(std::string_view text) {
    return [text, at = std::size_t{0}](char* buffer, std::size_t size) mutable {
        const std::size_t count = text.copy(buffer, size, at);
        at += count;
        return count;
    };
}

std::unique_ptr<CompiledSystem> compiled(const Model::Source& source, const SeriesLimits& limits,
                                         std::string& messages) {
    // The step matters to nobody before a run sets its own.
    auto result = std::make_unique<CompiledSystem>(limits, real{0});
    const Calculus::Scope scope(result->calculus);
    Compiler compiler(source, result->system);
    compiler.compile();
    messages = compiler.messages();
    return result;
}

bool foldAlike(const SeriesLimits& a, const SeriesLimits& b) {
    return a.simplifySmall == b.simplifySmall && sameValue(a.accuracy, b.accuracy);
}

}  // namespace

std::unique_ptr<CompiledSystem> ModelContent::take(const SeriesLimits& limits) {
    {
        const std::lock_guard<std::mutex> lock(spareMutex);
        if (spare != nullptr && foldAlike(spare->limits, limits)) {
            spare->limits = limits;
            return std::move(spare);
        }
    }
    std::string known;
    return compiled(sourceOf(text), limits, known);
}

Model Model::fromText(std::string_view text, const SeriesLimits& limits) { return read(sourceOf(text), limits); }

Model Model::read(const Source& source, const SeriesLimits& limits) {
    auto content = std::make_shared<ModelContent>();
    const Source recorded = [&](char* buffer, std::size_t size) {
        const std::size_t count = source(buffer, size);
        content->text.append(buffer, count);
        return count;
    };
    content->spare = compiled(recorded, limits, content->messages);
    for (const Differential& variable : content->spare->system.equations) content->names.push_back(variable.name());
    return Model(std::move(content));
}

const std::vector<std::string>& Model::names() const { return content_->names; }

const std::string& Model::messages() const { return content_->messages; }

}  // namespace zirk
