// SPDX-License-Identifier: MIT
// One node of the graph after the other, operands first.
#include "adaptive/lowering.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <tuple>

#include "adaptive/shared_sums.hpp"

namespace zirk {

namespace {

constexpr ValueIndex none = Value::none;

class Lowering {
public:
    Lowering(const FormulaGraph& graph, ValueSystem& system)
        : graph_(graph), system_(system), valueOf_(graph.size(), none) {}

    void lowerAll(const std::vector<NodeIndex>& roots) {
        std::vector<char> needed(graph_.size(), 0);
        for (const NodeIndex root : roots) needed[root] = 1;
        for (NodeIndex node = graph_.size(); node-- > 0;) {
            if (needed[node] == 0 || graph_[node].operation == Operation::Variable) continue;
            for (const NodeIndex operand : {graph_[node].left, graph_[node].right}) {
                if (operand != FormulaGraph::none) needed[operand] = 1;
            }
        }
        for (NodeIndex node = 0; node < graph_.size(); ++node) {
            // Numbers become part of what they are used in; those that have to be values do when they are asked for.
            if (needed[node] == 0 || graph_.isNumber(node)) continue;
            node_ = node;
            valueOf_[node] = lowered(graph_[node]);
        }
    }

    ValueIndex valueOf(NodeIndex node) {
        if (valueOf_[node] == none) {
            node_ = node;
            valueOf_[node] = constant(graph_[node].number);
        }
        return valueOf_[node];
    }

private:
    using Key = std::tuple<Law, ExprType, SquareStart, ValueIndex, ValueIndex, real>;

    bool isNumber(NodeIndex node) const { return graph_.isNumber(node); }
    real numberOf(NodeIndex node) const { return graph_[node].number; }
    bool isConstant(ValueIndex value) const { return value == none || system_.values[value].isConstant; }

    /// A value that equals none before it. The partner of a rate may come later, and is constant when the operand is.
    ValueIndex append(Value value) {
        value.formula = node_;
        const Operands operands = sameOrderOperands(value);
        const bool standsStill = std::all_of(std::begin(operands.of), std::end(operands.of),
                                             [this](ValueIndex operand) { return isConstant(operand); });
        value.isConstant = isJumping(value) || (value.law != Law::Time && standsStill);
        system_.values.push_back(value);
        return system_.size() - 1;
    }

    static Key keyOf(const Value& value) { return {value.law, value.function, value.start, value.a, value.b, value.n}; }

    ValueIndex make(Value value) {
        const auto [place, isNew] = known_.emplace(keyOf(value), system_.size());
        return isNew ? append(value) : place->second;
    }

    static Value with(Law law, ValueIndex a, ValueIndex b = none, real n = 0) {
        Value value;
        value.law = law;
        value.a = a;
        value.b = b;
        value.n = n;
        return value;
    }
    ValueIndex make(Law law, ValueIndex a, ValueIndex b = none, real n = 0) { return make(with(law, a, b, n)); }
    ValueIndex constant(real n) { return make(Law::Constant, none, none, n); }

    ValueIndex lowered(const FormulaGraph::Node& node) {
        const NodeIndex left = node.left;
        const NodeIndex right = node.right;
        switch (node.operation) {
            case Operation::Variable:
                return left;
            case Operation::Time:
                return make(Law::Time, none);
            case Operation::Add:
                if (isNumber(left)) return withNumber(Law::AddNumber, right, numberOf(left));
                if (isNumber(right)) return withNumber(Law::AddNumber, left, numberOf(right));
                return make(Law::Add, valueOf(left), valueOf(right));
            case Operation::Subtract:
                if (isNumber(left)) return withNumber(Law::FromNumber, right, numberOf(left));
                if (isNumber(right)) return withNumber(Law::AddNumber, left, -numberOf(right));
                return difference(valueOf(left), valueOf(right));
            case Operation::Multiply:
                if (isNumber(left)) return make(Law::Scale, valueOf(right), none, numberOf(left));
                if (isNumber(right)) return make(Law::Scale, valueOf(left), none, numberOf(right));
                return product(valueOf(left), valueOf(right));
            case Operation::Divide:
                if (isNumber(left)) return reciprocal(numberOf(left), valueOf(right));
                if (isNumber(right)) return make(Law::Ratio, valueOf(left), none, numberOf(right));
                return quotient(valueOf(left), valueOf(right));
            case Operation::Negate:
                return make(Law::Negate, valueOf(left));
            case Operation::Power:
                return power(left, right);
            default:
                return function(node.function, valueOf(left));
        }
    }

    ValueIndex withNumber(Law law, NodeIndex node, real n) {
        Value value = with(law, valueOf(node), none, n);
        const FormulaGraph::Node& operand = graph_[node];
        const bool isExponential = operand.operation == Operation::Function && operand.function == ExprType::Exp;
        if (isExponential && n == (law == Law::FromNumber ? 1 : -1)) {
            value.function = ExprType::Exp;
            value.b = valueOf(operand.left);
        }
        return make(value);
    }

    /// What a value is a multiple of, and by which factor.
    struct Multiple {
        ValueIndex of;
        real factor;
    };
    static bool isModest(real factor) { return std::fabs(factor) < 0x1p64L && std::fabs(factor) > 0x1p-64L; }
    Multiple multiple(ValueIndex value) const {
        Multiple result{value, 1};
        while (result.of >= system_.variables) {
            const Value& law = system_.values[result.of];
            // One factor besides signs, which no product rounds. One that changes the order of magnitude very much may
            // be what keeps the product in the range of numbers.
            if (law.law == Law::Scale && std::fabs(result.factor) == 1 && isModest(law.n)) {
                result = {law.a, result.factor * law.n};
            } else if (law.law == Law::Negate) {
                result = {law.a, -result.factor};
            } else {
                break;
            }
        }
        return result;
    }

    /// a - b; where b - a is there already, its negative.
    ValueIndex difference(ValueIndex a, ValueIndex b) {
        const Value opposite = with(Law::Subtract, b, a);
        const auto known = known_.find(keyOf(opposite));
        return known != known_.end() ? make(Law::Negate, known->second) : make(Law::Subtract, a, b);
    }

    ValueIndex product(ValueIndex a, ValueIndex b) {
        if (isConstant(b)) return make(Law::ScaleBy, a, b);
        if (isConstant(a)) return make(Law::ScaleBy, b, a);
        // A factor costs nothing inside the sum.
        const Multiple left = multiple(a);
        const Multiple right = multiple(b);
        const auto [first, second] = std::minmax(left.of, right.of);
        return make(Law::Product, first, second, left.factor * right.factor);
    }

    ValueIndex quotient(ValueIndex a, ValueIndex b) {
        if (isConstant(b)) return make(Law::RatioBy, a, b);
        // A power moves up: one more sum for it, but products need no check of their own and no division.
        const Value& power = system_.values[b];
        if (b >= system_.variables && power.law == Law::Power && power.n != std::trunc(power.n)) {
            return product(a, make(Law::Power, power.a, none, -power.n));
        }
        const Multiple numerator = multiple(a);
        return make(Law::Quotient, numerator.of, b, numerator.factor);
    }

    ValueIndex reciprocal(real n, ValueIndex b) {
        return isConstant(b) ? make(Law::RatioBy, constant(n), b) : make(Law::Reciprocal, none, b, n);
    }

    /// Whole exponents by products, which need no division by the base; so much is done for exponents up to 2^20.
    ValueIndex power(NodeIndex base, NodeIndex exponent) {
        constexpr real mostByProducts = 1048576;
        if (!isNumber(exponent)) {
            // a^b = exp(b ln a)
            const ValueIndex logarithm =
                isNumber(base) ? constant(std::log(numberOf(base))) : function(ExprType::Ln, valueOf(base));
            return function(ExprType::Exp, product(valueOf(exponent), logarithm));
        }
        const real n = numberOf(exponent);
        const ValueIndex u = valueOf(base);
        if (n > 0 && n <= mostByProducts && n == std::trunc(n)) return byProducts(u, static_cast<unsigned>(n));
        if (n == -1) return reciprocal(1, u);
        return n == real{0.5L} ? make(Law::Root, u) : make(Law::Power, u, none, n);
    }

    ValueIndex byProducts(ValueIndex u, unsigned n) {
        // Odd powers of a root are powers of what is under it, and watch its domain as the root does.
        if (n % 2 == 1 && n > 1 && u >= system_.variables && system_.values[u].law == Law::Root) {
            return make(Law::Power, system_.values[u].a, none, static_cast<real>(n) / 2);
        }
        ValueIndex result = none;
        for (ValueIndex square = u;; square = product(square, square)) {
            if ((n & 1U) != 0) result = result == none ? square : product(result, square);
            n >>= 1U;
            if (n == 0) return result;
        }
    }

    ValueIndex square(SquareStart start, real sign, ValueIndex a, ValueIndex b = none) {
        Value value = with(Law::SquareLaw, a, b, sign);
        value.start = start;
        return make(value);
    }

    ValueIndex rate(Law law, ExprType function, ValueIndex u, ValueIndex w, real sign = 1) {
        Value value = with(law, u, w, sign);
        value.function = function;
        return make(value);
    }

    /// c' = sign * partner * u' and partner' = otherSign * c * u'; what is asked for is one of them.
    ValueIndex pair(ExprType first, ExprType second, real otherSign, ExprType asked, ValueIndex u) {
        const auto [place, isNew] = pairs_.emplace(std::make_pair(first, u), system_.size());
        const ValueIndex at = place->second;
        if (isNew) {
            Value one = with(Law::ProductRate, u, at + 1, 1);
            one.function = first;
            Value other = with(Law::ProductRate, u, at, otherSign);
            other.function = second;
            append(one);
            append(other);
        }
        return asked == first ? at : at + 1;
    }

    /// c' = sign * w * u' with w = squareSign * c^2 from term 1 on.
    ValueIndex tangent(ExprType kind, SquareStart start, real sign, real squareSign, ValueIndex u) {
        const auto [place, isNew] = pairs_.emplace(std::make_pair(kind, u), system_.size());
        const ValueIndex at = place->second;
        if (isNew) {
            Value c = with(Law::ProductRate, u, at + 1, sign);
            c.function = kind;
            append(c);
            Value w = with(Law::SquareLaw, at, u, squareSign);
            w.start = start;
            append(w);
        }
        return at;
    }

    ValueIndex exponential(ValueIndex u) {
        const auto [place, isNew] = pairs_.emplace(std::make_pair(ExprType::Exp, u), system_.size());
        if (isNew) {
            Value c = with(Law::ProductRate, u, place->second, 1);
            c.function = ExprType::Exp;
            append(c);
        }
        return place->second;
    }

    ValueIndex inverseCotangent(ValueIndex u) {
        Value value = with(Law::QuotientRate, u, square(SquareStart::OnePlus, 1, u), -1);
        value.function = ExprType::ACotan;
        value.side = make(Law::Sign, u);
        return make(value);
    }

    ValueIndex function(ExprType kind, ValueIndex u) {
        switch (kind) {
            case ExprType::Sin:
            case ExprType::Cos:
                return pair(ExprType::Sin, ExprType::Cos, -1, kind, u);
            case ExprType::Sinh:
            case ExprType::Cosh:
                return pair(ExprType::Sinh, ExprType::Cosh, 1, kind, u);
            case ExprType::Tan:
                return tangent(kind, SquareStart::OnePlus, 1, 1, u);
            case ExprType::Cotan:
                return tangent(kind, SquareStart::OnePlus, -1, 1, u);
            case ExprType::Tanh:
                return tangent(kind, SquareStart::OverCosh, 1, -1, u);
            case ExprType::Cotanh:
                return tangent(kind, SquareStart::MinusOverSinh, 1, -1, u);
            case ExprType::ASin:
                return rate(Law::QuotientRate, kind, u, make(Law::Root, square(SquareStart::OneMinus, -1, u)));
            case ExprType::ACos:
                return rate(Law::QuotientRate, kind, u, make(Law::Root, square(SquareStart::OneMinus, -1, u)), -1);
            case ExprType::ATan:
                return rate(Law::QuotientRate, kind, u, square(SquareStart::OnePlus, 1, u));
            case ExprType::ACotan:
                return inverseCotangent(u);
            case ExprType::ASinh:
                return rate(Law::QuotientRate, kind, u, make(Law::Root, square(SquareStart::OnePlus, 1, u)));
            case ExprType::ACosh:
                return rate(Law::QuotientRate, kind, u, make(Law::Root, square(SquareStart::MinusOne, 1, u)));
            case ExprType::ATanh:
            case ExprType::ACotanh:
                return rate(Law::QuotientRate, kind, u, square(SquareStart::OneMinus, -1, u));
            case ExprType::Sqrt:
                return make(Law::Root, u);
            case ExprType::Exp:
                return exponential(u);
            case ExprType::Ln:
                return rate(Law::QuotientRate, kind, u, u);
            default:
                return make(Law::Step, u);
        }
    }

    const FormulaGraph& graph_;
    ValueSystem& system_;
    std::vector<ValueIndex> valueOf_;
    std::map<Key, ValueIndex> known_;
    std::map<std::pair<ExprType, ValueIndex>, ValueIndex> pairs_;
    NodeIndex node_ = FormulaGraph::none;
};

}  // namespace

ValueSystem lower(const FormulaGraph& graph, const std::vector<NodeIndex>& rates,
                  const std::vector<NodeIndex>& watched) {
    ValueSystem system;
    // Values that became factors may be left without use: the arrangement leaves them out.
    system.variables = static_cast<ValueIndex>(rates.size());
    system.values.resize(rates.size());
    Lowering lowering(graph, system);
    std::vector<NodeIndex> roots = rates;
    roots.insert(roots.end(), watched.begin(), watched.end());
    lowering.lowerAll(roots);
    for (const NodeIndex rate : rates) system.rates.push_back(lowering.valueOf(rate));
    for (const NodeIndex formula : watched) system.watched.push_back(lowering.valueOf(formula));
    return withSharedSums(system);
}

}  // namespace zirk
