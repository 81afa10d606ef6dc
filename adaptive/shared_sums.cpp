// SPDX-License-Identifier: MIT
// Families of values, each with one sum.
#include "adaptive/shared_sums.hpp"

#include <map>
#include <tuple>

namespace zirk {

namespace {

using Family = std::tuple<Law, ValueIndex, ValueIndex>;

bool hasFactor(const Value& value) { return value.law == Law::Product || value.law == Law::Quotient; }

Family familyOf(const Value& value) { return {value.law, value.a, value.b}; }

}  // namespace

ValueSystem withSharedSums(const ValueSystem& system) {
    std::map<Family, unsigned> members;
    for (ValueIndex i = system.variables; i < system.size(); ++i) {
        if (hasFactor(system.values[i])) ++members[familyOf(system.values[i])];
    }

    // Values with operands as they were, and where each of them has gone.
    ValueSystem result = system;
    result.values.clear();
    std::vector<ValueIndex> place;
    std::vector<char> isNew;
    std::map<Family, ValueIndex> sums;
    const auto push = [&](const Value& value, bool hasNewOperands) {
        result.values.push_back(value);
        isNew.push_back(hasNewOperands ? 1 : 0);
        return result.size() - 1;
    };
    for (ValueIndex i = 0; i < system.size(); ++i) {
        Value value = system.values[i];
        if (i < system.variables || !hasFactor(value) || members[familyOf(value)] < 2) {
            place.push_back(push(value, false));
            continue;
        }
        const real factor = value.n;
        value.n = 1;
        const auto [sum, isFirst] = sums.emplace(familyOf(value), result.size());
        if (isFirst) push(value, false);
        Value scaled;
        scaled.law = Law::Scale;
        scaled.a = sum->second;
        scaled.n = factor;
        scaled.formula = value.formula;
        place.push_back(factor == 1 ? sum->second : push(scaled, true));
    }

    const auto move = [&](ValueIndex& operand) {
        if (operand != Value::none) operand = place[operand];
    };
    for (ValueIndex i = 0; i < result.size(); ++i) {
        if (isNew[i] != 0) continue;
        move(result.values[i].a);
        move(result.values[i].b);
        move(result.values[i].side);
    }
    for (ValueIndex& rate : result.rates) move(rate);
    for (ValueIndex& watched : result.watched) move(watched);
    return result;
}

}  // namespace zirk
