// SPDX-License-Identifier: MIT
// Resource file: any bytes become settings and one line of answer per line that says something.
#include "driver/resource_file.hpp"

#include <algorithm>
#include <sstream>

#include "driver/usage.hpp"
#include "tests/fuzz/harness.hpp"

using namespace zirk;

namespace {

bool startsWith(const std::string& text, const std::string& start) { return text.compare(0, start.size(), start) == 0; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    const MemoryFile file;
    file.write(text);
    std::ostringstream log;
    Settings settings;
    settings.reset();
    readResourceFile(file.path(), settings, log);
    // The defaults that the usage shows are the settings just made.
    usageText(settings);

    std::istringstream answers(log.str());
    std::ptrdiff_t count = 0;
    for (std::string answer; std::getline(answers, answer); ++count) {
        require(startsWith(answer, "#(RES_SET) ") || startsWith(answer, "(WARN) ") || startsWith(answer, "#(WARN) "),
                "every answer is an echo or a warning: " + answer);
    }
    require(count <= std::count(text.begin(), text.end(), '\n') + 1, "no line has more than one answer");

    // A later line wins, whatever came before it.
    applyResourceLine("TMAX = 7", 1, settings, log);
    applyResourceLine("PRINTORD = 0", 2, settings, log);
    require(settings.classic.tMax == 7 && !settings.layout.printOrderColumn, "a later line wins");

    const auto configure = [&file](Settings& s, Output& output) {
        readResourceFile(file.path(), s, output.log());
        bound(s, {});
    };
    solveBothWays(configure, "y'' = -y*t & 1; x = y + 1; z' = sin(y);");
    return 0;
}
