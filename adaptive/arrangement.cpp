// SPDX-License-Identifier: MIT
// Levels, groups and arrays.
#include "adaptive/arrangement.hpp"

#include <algorithm>
#include <tuple>

namespace zirk {

namespace {

/// How many values have to be computed one after the other before each.
std::vector<std::uint32_t> levelsOf(const ValueSystem& system) {
    std::vector<std::uint32_t> level(system.size(), 0);
    for (ValueIndex i = system.variables; i < system.size(); ++i) {
        for (const ValueIndex operand : sameOrderOperands(system.values[i]).of) {
            if (operand != Value::none && operand != i) level[i] = std::max(level[i], level[operand] + 1);
        }
    }
    return level;
}

/// The value by whose term 0 a law divides.
ValueIndex divisorOf(const Value& value, ValueIndex itself) {
    switch (value.law) {
        case Law::RatioBy:
        case Law::Quotient:
        case Law::Reciprocal:
        case Law::QuotientRate:
            return value.b;
        case Law::Root:
            return itself;
        case Law::Power:
            return value.a;
        default:
            return Value::none;
    }
}

/// Variables, and all that rates and watched values are made from.
std::vector<ValueIndex> neededValues(const ValueSystem& system) {
    std::vector<char> isNeeded(system.size(), 0);
    std::vector<ValueIndex> stack(system.rates);
    stack.insert(stack.end(), system.watched.begin(), system.watched.end());
    while (!stack.empty()) {
        const ValueIndex value = stack.back();
        stack.pop_back();
        if (value == Value::none || isNeeded[value] != 0) continue;
        isNeeded[value] = 1;
        if (value < system.variables) continue;
        const Value& law = system.values[value];
        stack.insert(stack.end(), {law.a, law.b, law.side});
    }
    std::vector<ValueIndex> needed;
    for (ValueIndex i = 0; i < system.size(); ++i) {
        if (i < system.variables || isNeeded[i] != 0) needed.push_back(i);
    }
    return needed;
}

}  // namespace

ValueSystem arranged(const ValueSystem& system) {
    const std::vector<std::uint32_t> level = levelsOf(system);
    std::vector<ValueIndex> order = neededValues(system);
    const auto rank = [&](ValueIndex i) {
        const Value& value = system.values[i];
        return std::make_tuple(level[i], !value.isConstant, value.law, value.function);
    };
    std::stable_sort(order.begin() + system.variables, order.end(),
                     [&](ValueIndex x, ValueIndex y) { return rank(x) < rank(y); });
    std::vector<ValueIndex> place(system.size(), Value::none);
    for (ValueIndex i = 0; i < order.size(); ++i) place[order[i]] = i;
    const auto moved = [&](ValueIndex i) { return i == Value::none ? i : place[i]; };

    ValueSystem result;
    result.variables = system.variables;
    for (const ValueIndex i : order) {
        Value value = system.values[i];
        value.a = moved(value.a);
        value.b = moved(value.b);
        value.side = moved(value.side);
        result.values.push_back(value);
    }
    for (const ValueIndex rate : system.rates) result.rates.push_back(moved(rate));
    for (const ValueIndex watched : system.watched) result.watched.push_back(moved(watched));
    return result;
}

Arrangement::Arrangement(const ValueSystem& system, int highest)
    : rising(system.size(), none),
      falling(system.size(), none),
      weighted(system.size(), none),
      order(highest),
      rowLength((system.variables + 3) / 4 * 4) {
    giveArrays(system);
    groupValues(system);
    for (ValueIndex i = 0; i < system.size(); ++i) {
        instructions.push_back(instructionFor(system, i));
        const bool isVariable = i < system.variables;
        const bool isKept = rising[i] != none || falling[i] != none || weighted[i] != none;
        if (isVariable && isKept) keptVariables.push_back(instructions.back());
        if (!isVariable && !system.values[i].isConstant) loop.push_back(instructions.back());
        if (rising[i] != none) arrays.push_back({rising[i], 1, isVariable});
        if (falling[i] != none) arrays.push_back({falling[i], -1, isVariable});
        if (weighted[i] != none) arrays.push_back({weighted[i], 1, isVariable});
    }
}

Arrangement::Instruction Arrangement::instructionFor(const ValueSystem& system, ValueIndex c) const {
    const Value& value = system.values[c];
    const ValueIndex a = value.a == Value::none ? 0 : value.a;
    const ValueIndex b = value.b == Value::none ? 0 : value.b;
    const auto orScrap = [](std::uint32_t array, std::uint32_t place) { return array == none ? place : array; };
    Instruction result{c, a, b, none, none, none, 0, 0, 0};
    result.rising = orScrap(rising[c], scrap.rising);
    result.falling = orScrap(falling[c], scrap.falling);
    result.weighted = orScrap(weighted[c], scrap.rising);
    const auto sum = [&](std::uint32_t x, std::uint32_t y) {
        result.x = x;
        result.y = y;
    };
    switch (value.law) {
        case Law::Product:
            sum(rising[a], falling[b]);
            break;
        case Law::SquareLaw:
            sum(rising[a], falling[a]);
            break;
        case Law::Quotient:
        case Law::Reciprocal:
            sum(rising[b], falling[c]);
            break;
        case Law::Root:
            sum(rising[c], falling[c]);
            break;
        case Law::Power:
            sum(weighted[a], falling[c]);
            result.z = rising[a];
            break;
        case Law::ProductRate:
            sum(weighted[a], falling[b]);
            break;
        case Law::QuotientRate:
            sum(weighted[c], falling[b]);
            break;
        default:
            break;
    }
    return result;
}

void Arrangement::groupValues(const ValueSystem& system) {
    const std::vector<std::uint32_t> level = levelsOf(system);
    for (ValueIndex i = system.variables; i < system.size(); ++i) {
        const Value& value = system.values[i];
        const bool goes = !groups.empty() && groups.back().law == value.law &&
                          system.values[groups.back().begin].isConstant == value.isConstant &&
                          level[groups.back().begin] == level[i];
        if (!goes) groups.push_back({value.law, false, false, i, i});
        ++groups.back().end;
        groups.back().isKept |= rising[i] != none || falling[i] != none || weighted[i] != none;
        groups.back().isWeighted |= weighted[i] != none;
    }
    for (const Group& group : groups) (system.values[group.begin].isConstant ? constants : varying).push_back(group);
}

Arrangement::Scrap Arrangement::addScrap() {
    // Two lines of a cache: processors fetch the next one along.
    constexpr std::uint32_t far = 16;
    const std::uint32_t terms = static_cast<std::uint32_t>(order) + 1;
    const std::uint32_t first = cells + far;
    cells = first + terms + far;
    return {first, first + terms - 1};
}

void Arrangement::giveArrays(const ValueSystem& system) {
    const std::uint32_t terms = static_cast<std::uint32_t>(order) + 1;
    const std::uint32_t stride = (terms + 3) / 4 * 4;
    const auto give = [&](std::vector<std::uint32_t>& form, ValueIndex value, std::uint32_t first) {
        if (form[value] != none) return;
        form[value] = cells + first;
        cells += stride;
    };
    const auto rise = [&](ValueIndex value) { give(rising, value, 0); };
    const auto fall = [&](ValueIndex value) { give(falling, value, terms - 1); };
    const auto weigh = [&](ValueIndex value) { give(weighted, value, 0); };
    for (ValueIndex c = system.variables; c < system.size(); ++c) {
        const Value& value = system.values[c];
        // What its check, its norm, and its jumps look at.
        if (isFunction(value)) rise(c);
        if (isJumping(value)) rise(value.a);
        const ValueIndex divisor = divisorOf(value, c);
        if (divisor != Value::none) divisors.push_back(divisor);
        switch (value.law) {
            case Law::Product:
                rise(value.a);
                fall(value.b);
                break;
            case Law::Quotient:
            case Law::Reciprocal:
                rise(value.b);
                fall(c);
                break;
            case Law::Root:
                // Its zero limits the step.
                rise(value.a);
                fall(c);
                break;
            case Law::Power:
                weigh(value.a);
                rise(value.a);
                fall(c);
                break;
            case Law::ProductRate:
                weigh(value.a);
                rise(value.a);
                fall(value.b);
                break;
            case Law::QuotientRate:
                rise(value.a);
                weigh(c);
                fall(value.b);
                break;
            case Law::SquareLaw:
                rise(value.a);
                fall(value.a);
                break;
            default:
                break;
        }
    }
    // Each once: threads share them out.
    std::sort(divisors.begin(), divisors.end());
    divisors.erase(std::unique(divisors.begin(), divisors.end()), divisors.end());
    for (const ValueIndex value : system.watched) rise(value);
    scrap = {cells, cells + terms - 1};
    cells += stride;
}

}  // namespace zirk
