// SPDX-License-Identifier: MIT
// Remarks: one for each kind of thing that is not what it seems, and none for a model that is.
#include "classic/remarks.hpp"

#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

class Remark : public NodeTest {
protected:
    std::string of(const std::string& text) const {
        Workbench fresh;
        fresh.limits.simplifySmall = simplify;
        prepareText(fresh, text);
        std::string all;
        for (const std::string& remark : remarksOn(fresh.calculus, fresh.system)) all += remark + '\n';
        return all;
    }

    bool simplify = true;
};

TEST_F(Remark, AreNoneForWhatIsWhatItSeems) {
    EXPECT_EQ(of("k = 2; w = k*pi; y' = -k*w*y*sin(t) + exp(-t) & 1; y2' = y*cos(t) & 1; e = y*t; e2 = ln(2)*e;"), "");
}

TEST_F(Remark, TellOfABareTime) {
    EXPECT_EQ(of("y' = 2*t + t*t;"),
              "t is not the time in the equation of variable \"y\": write T for it, and a clock, \"T' = 1;\"\n");
    EXPECT_EQ(of("y = sin(t*t);"),
              "t is not the time in the equation of function sin(t*t): write T for it, and "
              "a clock, \"T' = 1;\"\n");
}

TEST_F(Remark, TellOfFunctionsThatFollowAnotherLaw) {
    EXPECT_EQ(of("y = cos(t + 1);"), "cos(t + 1) is not what its name says: write sin(u + pi/2)\n");
    EXPECT_EQ(of("a = 0.7; k' = 0 & 2; x' = cos(a) + ln(k) + ln(a);"), "") << "nothing moves in these";
    EXPECT_EQ(of("x' = -x & 2; y = ln(x) + ln(2*x);"),
              "ln(2*x) is not what its name says: write L for it, and \"L' = u'/u & ln(...);\"\n");
    EXPECT_EQ(of("x' = 1; y = atanh(x/2);"), "atanh(x/2) is not what its name says: use -i 0\n");
    EXPECT_EQ(of("x' = 1 & -2; y = argcotanh(x);"), "acotanh(x) is not what its name says: use -i 0\n");
    simplify = false;
    EXPECT_EQ(of("x' = 1; y = atanh(x/2);"), "");
}

TEST_F(Remark, TellOfNamesThatLagBehindOnlyWhereTheyMove) {
    EXPECT_EQ(of("th = 0.5; s = sin(th); w = 2*k; k' = 0 & 3; y' = -s*y - w & 1;"), "");
    EXPECT_EQ(
        of("u = trunc(T/5); T' = 1; a' = -a + u;"),
        "\"u\" lags one step behind in the equation of variable \"a\": take short steps of one size, -f 1 -s 0.001\n");
}

TEST_F(Remark, TellOfNamesThatLagBehind) {
    EXPECT_EQ(of("v = x*x; x' = -v & 1; y' = v;"),
              "\"v\" lags one step behind in the equation of variable \"x\": write its formula there instead of "
              "its name\n");
}

TEST_F(Remark, SeeWhatMovesInLoopsOfDefinitions) {
    const std::string advice =
        " lags one step behind in the equation of variable \"y\": write its formula there instead of its name\n";
    EXPECT_EQ(of("a = b + x; b = a; x' = -x & 1; y' = a & 1;"), "\"a\"" + advice);
    EXPECT_EQ(of("a = b + x; b = a; x' = -x & 1; y' = b & 1;"), "\"b\"" + advice);
    EXPECT_EQ(of("a = b + c; b = a; c = c; d = b + x; x' = -x & 1; y' = a + b + d & 1;"), "\"d\"" + advice)
        << "those that stand still in a loop are left out";
}

TEST_F(Remark, TellOfConstantsWithinTheAccuracy) {
    EXPECT_EQ(of("y' = 1e-12*y + 1e-13 & 1;"),
              "1e-12 counts as 0, within the accuracy: -i 0 or a smaller -a keeps it\n");
    EXPECT_EQ(of("y' = -1.00000000001*y & 1;"),
              "-1.00000000001 counts as -1, within the accuracy: -i 0 or a smaller -a keeps it\n");
    EXPECT_EQ(of("y' = 0.1*10*y & 1;"), "") << "rounding only";
    simplify = false;
    EXPECT_EQ(of("y' = 1e-12*y + 1e-13 & 1;"), "");
}

TEST_F(Remark, TellOfStartValuesThatSetNothing) {
    EXPECT_EQ(of("y' = y & 1; z(0) = 2; w(0) = 2;"),
              "the start value of \"w\" sets nothing: there is no such variable\n");
    EXPECT_EQ(of("x' = 1; w = x; w(0) = 2;"), "the start value of \"w\" sets nothing: it is computed from others\n");
    EXPECT_EQ(of("y' = y; y'(0) = 2;"), "the start value of \"y'\" sets nothing: there is no such variable\n");
    EXPECT_EQ(of("y' = y; y(1) = 2;"), "all start values belong to time 0, whatever time is written\n");
}

}  // namespace
