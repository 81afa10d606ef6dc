// SPDX-License-Identifier: MIT
// The getopt loop.
#include "driver/options.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ext/stdio_filebuf.h>
#include <string>

#include "driver/setting_table.hpp"
#include "driver/usage.hpp"
#include "zirk/error.hpp"

namespace zirk {

namespace {

/// Every option but two takes a value.
std::string optionString() {
    std::string letters;
    for (const SettingRow& row : settingRows()) {
        if (row.letter != 0 && row.apply != nullptr) letters += {row.letter, ':'};
    }
    return letters + "hv";
}

/// Whether nothing but what the option wants is there.
bool isWanted(SettingRow::Value wanted, const char* text) {
    char* end = nullptr;
    if (wanted == SettingRow::Value::Text) return true;
    if (wanted == SettingRow::Value::Integer) {
        (void)std::strtol(text, &end, 10);
    } else {
        (void)std::strtod(text, &end);
    }
    return end != text && *end == '\0';
}

/// An input stream that owns its file.
class FileInput : private __gnu_cxx::stdio_filebuf<char>, public std::istream {
public:
    explicit FileInput(int descriptor) : stdio_filebuf(descriptor, std::ios::in), std::istream(this) {
        if (!is_open()) setstate(std::ios::badbit);
    }
};

std::unique_ptr<std::istream> openInput(const char* name) {
    if (name == nullptr || std::strcmp(name, "-") == 0) return std::make_unique<FileInput>(STDIN_FILENO);
    const int descriptor = open(name, O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        throw Error(std::string("#(WARN) Error by opening input file: ") + std::strerror(errno) + "\n", 1);
    }
    return std::make_unique<FileInput>(descriptor);
}

}  // namespace

void applyOption(int letter, const char* argument, Settings& settings, Output& output, CommandLine& commandLine) {
    if (const SettingRow* row = findOption(static_cast<char>(letter))) {
        if (commandLine.badValue.empty() && !isWanted(row->value, argument)) {
            const bool isInteger = row->value == SettingRow::Value::Integer;
            commandLine.badValue = std::string("-") + row->letter + ' ' + argument +
                                   (isInteger ? ": the value is no integer, or not only an integer"
                                              : ": the value is no number, or not only a number");
        }
        return row->apply(settings, argument);
    }
    switch (letter) {
        case 'h':
        case '?':
            throw Error(usageText(settings), 1);
        case 'v':
            output.results() << "ZIRK/C version 1.0\n";
            commandLine.solve = false;
            return;
        // getopt as it is called here gives neither ':' nor 'W': its letters do not begin with a colon, and an option
        // that is gone comes as '?'. They keep their answers for whoever passes letters on.
        case ':':
            output.log() << "#(WARN) Missing argument for some option\n";
            return;
        case 'W':
            output.log() << "#(WARN) Option -" << letter << " not supported in \"simple number precision\" version\n";
            return;
        // The letter shows as its code, on purpose.
        default:
            throw Error("#(WARN) Wrong parameter " + std::to_string(letter) + "\n", 1);
    }
}

CommandLine parseOptions(int argc, char** argv, Settings& settings, Output& output) {
    CommandLine commandLine;
    // getopt writes its messages itself: what came before must be out.
    output.flush();
    // 0 and not 1: starts afresh however often it is called.
    optind = 0;
    const std::string letters = optionString();
    for (int letter = 0; (letter = getopt(argc, argv, letters.c_str())) != -1;) {
        applyOption(letter, optarg, settings, output, commandLine);
        if (!commandLine.solve) return commandLine;
    }
    commandLine.input = openInput(optind < argc ? argv[optind] : nullptr);
    if (optind + 1 < argc) output.log() << "#(WARN) Some unused parameters in the way...\n";
    if (settings.rows.printEvery < 0) settings.rows.printEvery = settings.classic.tMax / -settings.rows.printEvery;
    return commandLine;
}

}  // namespace zirk
