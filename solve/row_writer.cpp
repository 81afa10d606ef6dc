// SPDX-License-Identifier: MIT
// One small class for each family of formats.
#include "solve/row_writer.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "solve/number.hpp"

namespace zirk::solve {

namespace {

/// Whoever splits the line of headings at blanks finds as many words as columns.
std::string withoutBlanks(std::string text) {
    text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }),
               text.end());
    return text;
}

class TableWriter : public RowWriter {
public:
    TableWriter(std::ostream& out, const std::vector<std::string>& columns, int digits)
        : out_(out), columns_(columns), digits_(digits) {}

    void begin() override {
        line_ = "#";
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            // The sign of a comment stands in the first field.
            field(withoutBlanks(columns_[i]), i == 0 ? 1 : 0);
        }
        end();
    }

    void write(const real* values) override {
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            number_.clear();
            appendNumber(number_, values[i], digits_, LastZeros::InColumns);
            field(number_, 0);
        }
        end();
    }

private:
    /// Right-aligned, with at least one blank before it. Only numbers with exponents of four figures are wider, by one.
    void field(const std::string& text, std::size_t taken) {
        const auto width = static_cast<std::size_t>(widestNumber(digits_) - taken);
        line_.append(text.size() < width ? width - text.size() : 1, ' ');
        line_ += text;
    }
    void end() {
        line_ += '\n';
        out_.write(line_.data(), static_cast<std::streamsize>(line_.size()));
        line_.clear();
    }

    std::ostream& out_;
    const std::vector<std::string> columns_;
    const int digits_;
    std::string line_;
    std::string number_;
};

/// Fields with a character between them, and a line of headings.
class SeparatedWriter : public RowWriter {
public:
    SeparatedWriter(std::ostream& out, const std::vector<std::string>& columns, int digits, char separator)
        : out_(out), columns_(columns), digits_(digits), separator_(separator) {}

    void begin() override {
        for (const std::string& column : columns_) line_ += quotedField(column, separator_) + separator_;
        end();
    }

    void write(const real* values) override {
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            appendNumber(line_, values[i], digits_);
            line_ += separator_;
        }
        end();
    }

private:
    void end() {
        line_.back() = '\n';
        out_.write(line_.data(), static_cast<std::streamsize>(line_.size()));
        line_.clear();
    }

    std::ostream& out_;
    const std::vector<std::string> columns_;
    const int digits_;
    const char separator_;
    std::string line_;
};

/// One object a line. JSON has no word for what is not finite but null.
class JsonWriter : public RowWriter {
public:
    JsonWriter(std::ostream& out, const std::vector<std::string>& columns, int digits) : out_(out), digits_(digits) {
        for (const std::string& column : columns)
            keys_.push_back((keys_.empty() ? "{" : ", ") + jsonString(column) + ": ");
    }

    void begin() override {}

    void write(const real* values) override {
        for (std::size_t i = 0; i < keys_.size(); ++i) {
            line_ += keys_[i];
            if (std::isfinite(values[i])) {
                appendNumber(line_, values[i], digits_);
            } else {
                line_ += "null";
            }
        }
        line_ += "}\n";
        out_.write(line_.data(), static_cast<std::streamsize>(line_.size()));
        line_.clear();
    }

private:
    std::ostream& out_;
    const int digits_;
    std::vector<std::string> keys_;
    std::string line_;
};

}  // namespace

std::unique_ptr<RowWriter> makeRowWriter(Format format, std::ostream& out, const std::vector<std::string>& columns,
                                         int digits) {
    switch (format) {
        case Format::Csv:
            return std::make_unique<SeparatedWriter>(out, columns, digits, ',');
        case Format::Tsv:
            return std::make_unique<SeparatedWriter>(out, columns, digits, '\t');
        case Format::Json:
            return std::make_unique<JsonWriter>(out, columns, digits);
        case Format::Table:
            break;
    }
    return std::make_unique<TableWriter>(out, columns, digits);
}

std::string quotedField(const std::string& text, char separator) {
    if (text.find_first_of(std::string("\"\r\n") + separator) == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

std::string jsonString(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted += {'\\', c};
        } else if (static_cast<unsigned char>(c) < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
            quoted += escape;
        } else {
            quoted += c;
        }
    }
    return quoted + '"';
}

}  // namespace zirk::solve
