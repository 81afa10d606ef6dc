// SPDX-License-Identifier: MIT
// Which chains run while sums go on and after they have ended.
#include "series/needed_part.hpp"

#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

class Needed : public NodeTest {
protected:
    void prepare(const std::string& text) {
        prepareText(*this, text);
        graph = TermGraph(system.equations);
        programs = std::make_unique<Programs>(graph);
        part = std::make_unique<NeededPart>(graph, *programs);
        wanting.clear();
        for (SlotIndex i = 0; i < graph.variables; ++i) wanting.push_back(i);
    }

    void end(SlotIndex variable, bool isLastOfItsComponent) {
        EXPECT_EQ(part->noteEnd(variable), isLastOfItsComponent);
        wanting.erase(std::find(wanting.begin(), wanting.end(), variable));
        part->shrink(wanting);
    }

    /// The variables whose next terms the program makes, by their names.
    std::string computed() const {
        std::string names;
        for (const Program::Instruction& instruction : part->program().instructions) {
            if (instruction.result < Program::Result::Next) continue;
            names += static_cast<const Differential*>(graph[instruction.target].node)->name();
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    TermGraph graph;
    std::unique_ptr<Programs> programs;
    std::unique_ptr<NeededPart> part;
    std::vector<SlotIndex> wanting;
};

TEST_F(Needed, IsEverythingWhileAllSumsGoOn) {
    prepare("a' = -a & 1; b' = -b & 2;");
    part->beginPoint(wanting);
    EXPECT_EQ(&part->program(), &programs->varying);
}

TEST_F(Needed, BeginsWithoutWhatWantsNothing) {
    prepare("a' = -a & 1; b' = -b & 2;");
    part->beginPoint({1});
    EXPECT_EQ(computed(), "b");
    part->beginPoint(wanting);
    EXPECT_EQ(computed(), "ab");
}

TEST_F(Needed, LosesWhatHasEnded) {
    prepare("a' = -a & 1; b' = -b & 2;");
    part->beginPoint(wanting);
    end(0, true);
    EXPECT_EQ(computed(), "b");
}

TEST_F(Needed, KeepsWhatOthersAreMadeFrom) {
    prepare("a' = -a & 1; b' = a*b & 2; c' = -c & 3;");
    part->beginPoint(wanting);
    end(0, true);
    end(2, true);
    EXPECT_EQ(computed(), "ab");
}

TEST_F(Needed, KeepsAComponentUntilItsLastSumEnds) {
    // a and b make each other, and nothing is made from them but themselves.
    prepare("a' = b & 1; b' = -a & 2; c' = -c & 3;");
    part->beginPoint(wanting);
    end(0, false);
    EXPECT_EQ(&part->program(), &programs->varying) << "two thirds go on, but nothing is useless";
    end(1, true);
    EXPECT_EQ(computed(), "c");
}

TEST_F(Needed, IsMadeAnewOnlyWhenAQuarterHasEnded) {
    prepare("a' = -a & 1; b' = -b & 2; c' = -c & 3; d' = -d & 4; e' = -e & 5;");
    part->beginPoint(wanting);
    end(0, true);
    EXPECT_EQ(computed(), "abcde");
    end(1, true);
    EXPECT_EQ(computed(), "cde");
    end(2, true);
    EXPECT_EQ(computed(), "de");
}

TEST_F(Needed, StaysWhenNobodyIsLeft) {
    prepare("a' = -a & 1;");
    part->beginPoint(wanting);
    end(0, true);
    EXPECT_EQ(computed(), "a");
}

}  // namespace
