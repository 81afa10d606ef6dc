// SPDX-License-Identifier: MIT
// A system of equations, from its text.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "zirk/classic_options.hpp"
#include "zirk/error.hpp"

namespace zirk {

struct ModelContent;

/// Equations as they were written. Does not change while it is run; copies share what they hold, and any number of runs
/// on any threads may use one model at the same time.
class [[gnu::visibility("default")]] Model {
public:
    /// Puts up to `size` characters into `buffer` and returns how many; fewer than `size` are the last.
    using Source = std::function<std::size_t(char* buffer, std::size_t size)>;

    /// Reads the text of a model: "x'' = -x & 1;". The limits decide how formulas are folded; runs with other limits
    /// read the text again. Throws ParseError for a text that does not compile.
    static Model fromText(std::string_view text, const SeriesLimits& limits = {});

    /// As fromText, from a source that is asked for more and more. What it throws goes through; an Error gets the
    /// messages about what was read before in front of its text.
    static Model read(const Source& source, const SeriesLimits& limits = {});

    /// Names of the variables that the text defines, in bytewise order; the k-th derivative of y is "y%k".
    const std::vector<std::string>& names() const;

    /// What the compiler had to say about a text that it accepted, as lines; mostly nothing.
    const std::string& messages() const;

private:
    friend class ClassicIntegrator;

    explicit Model(std::shared_ptr<ModelContent> content) : content_(std::move(content)) {}

    std::shared_ptr<ModelContent> content_;
};

}  // namespace zirk
