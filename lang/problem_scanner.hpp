// SPDX-License-Identifier: MIT
// Owner of the state of the generated scanner of problems.
#pragma once

namespace zirk {

class ProblemReader;
struct Place;

/// One pass over the text of a reader.
class ProblemScanner {
public:
    explicit ProblemScanner(ProblemReader& reader);
    ~ProblemScanner();
    ProblemScanner(const ProblemScanner&) = delete;
    ProblemScanner& operator=(const ProblemScanner&) = delete;

    void* handle() const { return handle_; }

private:
    void* handle_ = nullptr;
};

}  // namespace zirk

union PROBLEM_STYPE;

/// Next token code with its value and place; 0 at the end of the text. (Generated code has no namespace.)
int problem_lex(PROBLEM_STYPE* value, zirk::Place* place, void* scanner);
