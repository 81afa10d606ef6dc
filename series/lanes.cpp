// SPDX-License-Identifier: MIT
// Which chains stand side by side.
#include "series/lanes.hpp"

#include <algorithm>
#include <string>
#include <unordered_map>

namespace zirk {

namespace {

using Code = Lanes::Code;

constexpr std::uint32_t none = TermGraph::none;

/// Chains that are looked at together: few enough that what they share is still near.
constexpr std::size_t window = 512;

/// The code for an operand in the row; those for the other places follow it.
Code at(Code inRow, Place::Where where) { return static_cast<Code>(static_cast<int>(inRow) + static_cast<int>(where)); }

/// One chain after the other in a form that can be packed.
class Packer {
public:
    Packer(const Programs& programs, Lanes& lanes)
        : places_(programs.places),
          lanes_(lanes),
          levels_{std::vector<std::uint32_t>(), std::vector<std::uint32_t>(programs.arrays),
                  std::vector<std::uint32_t>(programs.nows), std::vector<std::uint32_t>(programs.fixed)} {}

    void pack(const Program& program) {
        auto next = program.instructions.data();
        for (std::size_t first = 0; first < program.chains.size(); first += window) {
            const std::size_t last = std::min(first + window, program.chains.size());
            chains_.clear();
            operands_.clear();
            for (std::size_t i = first; i < last; ++i) {
                takeChain(next, next + program.chains[i].length);
                next += program.chains[i].length;
            }
            std::stable_sort(chains_.begin(), chains_.end(), [](const Chain& a, const Chain& b) {
                return a.level != b.level ? a.level < b.level : a.shape < b.shape;
            });
            writeRuns();
            lowest_ = chains_.back().level + 1;
        }
    }

private:
    struct Chain {
        /// Higher than those of all chains that it needs.
        std::uint32_t level;
        std::uint32_t shape;
        std::uint32_t operands;
    };

    void takeChain(const Program::Instruction* next, const Program::Instruction* end) {
        using Result = Program::Result;
        shape_.clear();
        Chain chain{lowest_, 0, static_cast<std::uint32_t>(operands_.size())};
        for (; next != end; ++next) {
            if (next->load != none) takeOperand(chain, Code::LoadRow, next->load);
            takeOperation(chain, *next);
            switch (next->result) {
                case Result::Nothing:
                    break;
                case Result::Store:
                    take(Code::Store, places_[next->target].index);
                    made_.push_back(places_[next->target]);
                    break;
                case Result::Keep:
                    take(Code::Keep, next->array);
                    made_.push_back({Place::Array, next->array});
                    break;
                default:
                    takeNext(places_[next->target]);
            }
        }
        for (const Place place : made_) levels_[place.where][place.index] = chain.level + 1;
        made_.clear();
        const auto known = numbers_.try_emplace(shape_, static_cast<std::uint32_t>(shapes_.size()));
        chain.shape = known.first->second;
        if (known.second) shapes_.push_back(&known.first->first);
        chains_.push_back(chain);
    }

    void takeOperation(Chain& chain, const Program::Instruction& instruction) {
        using From = Program::Code;
        switch (instruction.code) {
            case From::Nothing:
                break;
            case From::Plus:
                return takeOperand(chain, Code::PlusRow, instruction.a);
            case From::Minus:
                return takeOperand(chain, Code::MinusRow, instruction.a);
            case From::MinusFrom:
                return takeOperand(chain, Code::MinusFromRow, instruction.a);
            case From::Negate:
                return take(Code::Negate);
            case From::Truncate:
                return take(Code::Truncate);
            case From::Scale:
                return takeConstant(chain, Code::Scale, instruction.a);
            case From::ScaleByDouble:
                return takeConstant(chain, Code::ScaleByDouble, instruction.a);
            case From::Ratio:
                return takeConstant(chain, Code::Ratio, instruction.a);
            case From::Product:
                return takeSum(chain, Code::Product, instruction);
            case From::PlusProduct:
                return takeSum(chain, Code::PlusProduct, instruction);
            case From::MinusProduct:
                return takeSum(chain, Code::MinusProduct, instruction);
            case From::Quotient:
                return takeSum(chain, Code::Quotient, instruction);
        }
    }

    void take(Code code) { shape_ += static_cast<char>(code); }

    void take(Code code, std::uint32_t operand) {
        take(code);
        operands_.push_back(operand);
    }

    void takeOperand(Chain& chain, Code inRow, SlotIndex slot) {
        const Place place = places_[slot];
        need(chain, place);
        take(at(inRow, place.where), place.index);
    }

    void takeConstant(Chain& chain, Code code, SlotIndex slot) {
        need(chain, places_[slot]);
        take(code, places_[slot].index);
    }

    void takeSum(Chain& chain, Code code, const Program::Instruction& instruction) {
        need(chain, {Place::Array, instruction.a});
        need(chain, {Place::Array, instruction.b});
        const bool joins = !shape_.empty() && isSum(shape_.back()) && code != Code::Product && code != Code::Quotient;
        if (joins) {
            const int both =
                2 * (shape_.back() - static_cast<char>(Code::Product)) + (code == Code::MinusProduct ? 1 : 0);
            shape_.back() = static_cast<char>(static_cast<int>(Code::ProductPlusProduct) + both);
        } else {
            take(code);
        }
        operands_.push_back(instruction.a);
        operands_.push_back(instruction.b);
    }

    static bool isSum(char code) {
        return code >= static_cast<char>(Code::Product) && code <= static_cast<char>(Code::MinusProduct);
    }

    void takeNext(Place place) { take(place.where == Place::Row ? Code::NextRow : Code::NextArray, place.index); }

    /// What stands in a row was made at the order before.
    void need(Chain& chain, Place place) const {
        if (place.where != Place::Row) chain.level = std::max(chain.level, levels_[place.where][place.index]);
    }

    void writeRuns() {
        for (std::size_t first = 0; first < chains_.size();) {
            std::size_t last = first;
            while (last < chains_.size() && chains_[last].level == chains_[first].level &&
                   chains_[last].shape == chains_[first].shape) {
                ++last;
            }
            for (std::uint32_t lanes = Lanes::most; lanes > 0; lanes /= 2) {
                const std::size_t blocks = (last - first) / lanes;
                if (blocks > 0) writeRun(first, static_cast<std::uint32_t>(blocks), lanes);
                first += blocks * lanes;
            }
        }
    }

    void writeRun(std::size_t first, std::uint32_t blocks, std::uint32_t lanes) {
        const std::string& shape = *shapes_[chains_[first].shape];
        // Single blocks that follow each other make one.
        const bool goesOn =
            blocks == 1 && !lanes_.runs.empty() && lanes_.runs.back().blocks == 1 && lanes_.runs.back().lanes == lanes;
        if (!goesOn) lanes_.runs.push_back({0, blocks, lanes});
        for (const char code : shape) lanes_.codes.push_back(static_cast<Code>(code));
        lanes_.runs.back().codes += static_cast<std::uint32_t>(shape.size());
        for (std::uint32_t block = 0; block < blocks; ++block, first += lanes) {
            std::uint32_t operand = 0;
            for (const char code : shape) {
                for (std::uint32_t count = operandsOf(static_cast<Code>(code)); count > 0; --count, ++operand) {
                    for (std::size_t lane = 0; lane < lanes; ++lane) {
                        lanes_.operands.push_back(operands_[chains_[first + lane].operands + operand]);
                    }
                }
            }
        }
    }

    static std::uint32_t operandsOf(Code code) {
        if (code == Code::Negate || code == Code::Truncate) return 0;
        if (code >= Code::ProductPlusProduct && code <= Code::MinusProductMinusProduct) return 4;
        return code >= Code::Product && code <= Code::Quotient ? 2 : 1;
    }

    const std::vector<Place>& places_;
    Lanes& lanes_;
    /// By kind and index of a place: one more than the level of the chain that makes what stands there.
    std::vector<std::uint32_t> levels_[4];
    /// Level of the chains of this window that need no other one of it.
    std::uint32_t lowest_ = 0;
    /// Of all shapes so far: their numbers by their codes, and these by their numbers.
    std::unordered_map<std::string, std::uint32_t> numbers_;
    std::vector<const std::string*> shapes_;
    // Of the present window.
    std::vector<Chain> chains_;
    std::vector<std::uint32_t> operands_;
    // Of the present chain.
    std::string shape_;
    std::vector<Place> made_;
};

}  // namespace

Lanes::Lanes(const Program& program, const Programs& programs) { Packer(programs, *this).pack(program); }

}  // namespace zirk
