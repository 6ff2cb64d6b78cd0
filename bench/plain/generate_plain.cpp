// The generator and window loops as scalar code, vectorisation off.
#include <cmath>
#include <random>

#include "generate_refs.h"

namespace refs {

namespace {
std::mt19937 &engine()
{
    static std::mt19937 rng(42);
    return rng;
}
}  // namespace

void plainUniform32(float *dst, int len, float lo, float hi)
{
    std::uniform_real_distribution<float> d(lo, hi);
    for (int i = 0; i < len; ++i)
        dst[i] = d(engine());
}

void plainGauss64(double *dst, int len, double mean, double dev)
{
    std::normal_distribution<double> d(mean, dev);
    for (int i = 0; i < len; ++i)
        dst[i] = d(engine());
}

void plainHann64(const double *src, double *dst, int len)
{
    const double step = 2 * M_PI / (len - 1);
    for (int i = 0; i < len; ++i)
        dst[i] = src[i] * (0.5 - 0.5 * std::cos(step * i));
}

void plainKaiser32(const float *src, float *dst, int len, float alpha)
{
    const double h = (len - 1) / 2.0, norm = std::cyl_bessel_i(0.0, alpha * h);
    for (int i = 0; i < len; ++i)
        dst[i] = src[i] * float(std::cyl_bessel_i(0.0, alpha * std::sqrt(h * h - (i - h) * (i - h))) / norm);
}

}  // namespace refs
