// SPDX-License-Identifier: MIT
// Rows of numbers in the formats that are offered.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "solve/request.hpp"

namespace zirk::solve {

/// Writes rows with a number for every column, each of them whole.
class RowWriter {
public:
    virtual ~RowWriter() = default;
    RowWriter(const RowWriter&) = delete;
    RowWriter& operator=(const RowWriter&) = delete;

    /// What stands before the first row.
    virtual void begin() = 0;
    /// As many values as there are columns.
    virtual void write(const real* values) = 0;

protected:
    RowWriter() = default;
};

/// `columns`: their headings. The stream must outlive the writer.
std::unique_ptr<RowWriter> makeRowWriter(Format format, std::ostream& out, const std::vector<std::string>& columns,
                                         int digits);

/// Quoted when it holds the separator, a quotation mark or a line end, as RFC 4180 wants it.
std::string quotedField(const std::string& text, char separator);

/// With quotation marks, as JSON wants it. Bytes that are not ASCII stay as they are.
std::string jsonString(const std::string& text);

}  // namespace zirk::solve
