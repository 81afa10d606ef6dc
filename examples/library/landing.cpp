// Where a ball lands that is thrown against the drag of the air, by the library:
//     g++ -std=c++17 landing.cpp $(pkg-config --cflags --libs zirk) -o landing && ./landing
#include <cstdio>
#include <zirk/integrator.hpp>

int main() {
    const auto ball = zirk::Problem::fromText(
        "v = sqrt(x'^2 + y'^2);  x'' = -v*x'/200 & 0;  y'' = -v*y'/200 - 9.80665 & 0;"
        "x'(0) = 30*cos(pi/4);  y'(0) = 30*sin(pi/4);");
    zirk::Integrator run(ball);
    run.watch(ball.expression("y"), zirk::Crossing::Down);
    zirk::Readout readout(ball, {ball.expression("x"), ball.expression("v")});
    while (run.crossings().empty() && run.step(10)) {
    }
    for (const zirk::ZeroCrossing& landing : run.crossings()) {
        zirk::real values[2];
        run.read(readout, landing.time, values);
        std::printf("after %.15Lf s, at %.14Lf m, with %.14Lf m/s\n", landing.time, values[0], values[1]);
    }
}
