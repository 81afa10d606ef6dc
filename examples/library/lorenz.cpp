// Solves the Lorenz system of examples/lorenz.zirk and prints its state at t = 10, by the library:
//     g++ -std=c++17 lorenz.cpp $(pkg-config --cflags --libs zirk) -o lorenz && ./lorenz
#include <zirk/classic_integrator.hpp>

#include <cstdio>

int main() {
    const auto model = zirk::Model::fromText("x' = 10*(y - x) & 0;  y' = x*(28 - z) - y & 1;  z' = x*y - 8/3*z & 0;");
    zirk::ClassicOptions options;
    options.tMax = 10;
    options.limits.accuracy = 1e-18L;
    zirk::ClassicIntegrator lorenz(model, options);
    while (lorenz.next() != zirk::ClassicIntegrator::Pass::End) {
    }
    std::printf("%.16Le %.16Le %.16Le %.16Le\n", lorenz.time(), lorenz.value("x"), lorenz.value("y"),
                lorenz.value("z"));
}
