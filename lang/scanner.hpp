// SPDX-License-Identifier: MIT
// Owner of the generated scanner's state.
#pragma once

namespace zirk {

class Compiler;
struct Semantic;

/// One pass over the input of a compiler.
class Scanner {
public:
    explicit Scanner(Compiler& compiler);
    ~Scanner();
    Scanner(const Scanner&) = delete;
    Scanner& operator=(const Scanner&) = delete;

    void* handle() const { return handle_; }

private:
    void* handle_ = nullptr;
};

}  // namespace zirk

/// Next token code; 0 at the end of the input. The current token's text goes to the compiler. (Generated code has no
/// namespace.)
int yylex(zirk::Semantic* value, void* scanner);
