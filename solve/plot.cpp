// SPDX-License-Identifier: MIT
// Rows into a file, gnuplot over it, and its picture to where it belongs.
#include "solve/plot.hpp"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "solve/failure.hpp"
#include "solve/plot_script.hpp"
#include "solve/signals.hpp"

namespace zirk::solve {

namespace fs = std::filesystem;

namespace {

/// As many figures as gnuplot keeps.
constexpr int figuresOfGnuplot = 17;

/// In the folders where programs are looked for.
std::string findGnuplot() {
    const char* path = std::getenv("PATH");
    const std::string folders = path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin";
    for (std::size_t begin = 0; begin <= folders.size();) {
        const std::size_t end = std::min(folders.find(':', begin), folders.size());
        const std::string program = folders.substr(begin, end - begin) + "/gnuplot";
        if (access(program.c_str(), X_OK) == 0) return program;
        begin = end + 1;
    }
    throw Failure("--plot needs gnuplot, which is not installed", RunFailed);
}

/// Runs gnuplot on a script; what it says goes into a file. The wait status.
int runGnuplot(const std::string& gnuplot, const std::string& script, const std::string& said) {
    const pid_t process = fork();
    if (process < 0) throw Failure(std::string("cannot start gnuplot: ") + std::strerror(errno), RunFailed);
    if (process == 0) {
        const int log = open(said.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        for (const int descriptor : {STDOUT_FILENO, STDERR_FILENO}) dup2(log, descriptor);
        std::signal(SIGXFSZ, SIG_DFL);
        execl(gnuplot.c_str(), "gnuplot", script.c_str(), nullptr);
        _exit(127);
    }
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
        if (endingSignal() != 0) kill(process, SIGTERM);
    }
    return status;
}

/// What gnuplot says is wrong; it first repeats the command.
std::string complaint(const std::string& file) {
    std::ifstream in(file);
    std::string line;
    std::string found = "it does not say why";
    while (std::getline(in, line)) {
        const std::size_t place = line.find("line ");
        const std::size_t colon = place == std::string::npos ? place : line.find(": ", place);
        if (colon != std::string::npos) found = line.substr(colon + 2);
    }
    return found;
}

bool hasSecondLine(const std::string& file) {
    std::ifstream in(file);
    std::string line;
    return std::getline(in, line) && std::getline(in, line);
}

void copyFile(const std::string& from, const std::string& to) {
    std::ifstream in(from, std::ios::binary);
    errno = 0;
    std::ofstream out(to, std::ios::binary | std::ios::trunc);
    if (out && (out << in.rdbuf()) && out.flush()) return;
    throw Failure("cannot write " + to + ": " + std::strerror(errno != 0 ? errno : EIO), RunFailed);
}

}  // namespace

ScratchDirectory::ScratchDirectory() {
    std::error_code error;
    std::string name = (fs::temp_directory_path(error) / "zirk-solve.XXXXXX").string();
    if (error || mkdtemp(name.data()) == nullptr) {
        throw Failure("cannot make a directory for the rows of the plot: " +
                          (error ? error.message() : std::string(std::strerror(errno))),
                      RunFailed);
    }
    path_ = name;
}

ScratchDirectory::~ScratchDirectory() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

Plot::Plot(const std::string& file, const std::vector<std::string>& columns, const RowPlan& rows)
    : file_(file),
      columns_(columns),
      hasLines_(rows.intervals > 0 || !rows.listed.empty() || rows.perStep > 0),
      gnuplot_(findGnuplot()),
      rows_(scratch_.file("rows")),
      writer_(makeRowWriter(Format::Table, rows_, columns, figuresOfGnuplot)) {}

void Plot::draw() {
    if (!rows_.flush()) throw Failure("cannot write the rows of the plot", RunFailed);
    if (!hasSecondLine(scratch_.file("rows")))
        throw Failure("there is nothing to draw: the run has no rows", RunFailed);
    const std::string picture = scratch_.file("picture");
    const std::string script = scratch_.file("script");
    std::ofstream(script) << PlotScript{pictureOf(file_), picture, scratch_.file("rows"), columns_, hasLines_}.text();
    const std::string said = scratch_.file("said");
    if (runGnuplot(gnuplot_, script, said) != 0) throw Failure("gnuplot fails: " + complaint(said), RunFailed);
    copyFile(picture, file_);
}

}  // namespace zirk::solve
