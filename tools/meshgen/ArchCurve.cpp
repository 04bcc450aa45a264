#include "tools/meshgen/ArchCurve.h"

#include <algorithm>
#include <cmath>

namespace kelo::meshgen {

namespace {

/// Solves the square system by elimination with row exchange; `rows` hold matrix and right side.
std::vector<double> solved(std::vector<std::vector<double>> rows)
{
    const std::size_t n = rows.size();
    for (std::size_t k = 0; k < n; ++k) {
        std::size_t best = k;
        for (std::size_t i = k + 1; i < n; ++i)
            if (std::abs(rows[i][k]) > std::abs(rows[best][k])) best = i;
        std::swap(rows[k], rows[best]);
        for (std::size_t i = k + 1; i < n; ++i) {
            const double factor = rows[i][k] / rows[k][k];
            for (std::size_t j = k; j <= n; ++j)
                rows[i][j] -= factor * rows[k][j];
        }
    }
    std::vector<double> result(n);
    for (std::size_t k = n; k-- > 0;) {
        double sum = rows[k][n];
        for (std::size_t j = k + 1; j < n; ++j)
            sum -= rows[k][j] * result[j];
        result[k] = sum / rows[k][k];
    }
    return result;
}

/// Coefficients of the polynomial of the given degree nearest to (u, value) in least squares.
std::vector<double> fitted(const std::vector<double> &u, const std::vector<double> &values,
                           std::size_t degree)
{
    std::vector<std::vector<double>> rows(degree + 1, std::vector<double>(degree + 2, 0.0));
    for (std::size_t p = 0; p < u.size(); ++p) {
        std::vector<double> powers(degree + 1, 1.0);
        for (std::size_t i = 1; i <= degree; ++i)
            powers[i] = powers[i - 1] * u[p];
        for (std::size_t i = 0; i <= degree; ++i) {
            for (std::size_t j = 0; j <= degree; ++j)
                rows[i][j] += powers[i] * powers[j];
            rows[i][degree + 1] += powers[i] * values[p];
        }
    }
    return solved(std::move(rows));
}

double valueOf(const std::vector<double> &coefficients, double u)
{
    double result = 0.0;
    for (std::size_t i = coefficients.size(); i-- > 0;)
        result = result * u + coefficients[i];
    return result;
}

} // namespace

ArchCurve::ArchCurve(const std::vector<Vec3> &points)
{
    // Parameter: length along the points' polygon, scaled to -1 ... 1 to keep the powers tame.
    std::vector<double> u(points.size(), 0.0);
    std::vector<double> x;
    std::vector<double> y;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i > 0)
            u[i] =
                u[i - 1] + std::hypot(points[i].x - points[i - 1].x, points[i].y - points[i - 1].y);
        x.push_back(points[i].x);
        y.push_back(points[i].y);
    }
    const double whole = u.back();
    for (double &value : u)
        value = value / whole * 2.0 - 1.0;
    const std::vector<double> cx = fitted(u, x, 5);
    const std::vector<double> cy = fitted(u, y, 4);
    constexpr int count = 2000; // 0.05 mm: far below anything that is placed with it
    for (int i = 0; i <= count; ++i) {
        const double at = 2.0 * i / count - 1.0;
        samples.push_back({valueOf(cx, at), valueOf(cy, at), 0.0});
        stations.push_back(
            i == 0 ? 0.0 : stations.back() + distance(samples.back(), samples[samples.size() - 2]));
    }
}

Vec3 ArchCurve::pointAt(double station) const
{
    if (station <= 0.0) return samples.front() + tangentAt(0.0) * station;
    if (station >= length()) return samples.back() + tangentAt(length()) * (station - length());
    const auto next = std::upper_bound(stations.begin(), stations.end(), station);
    const auto i = static_cast<std::size_t>(next - stations.begin());
    const double f = (station - stations[i - 1]) / (stations[i] - stations[i - 1]);
    return samples[i - 1] + (samples[i] - samples[i - 1]) * f;
}

Vec3 ArchCurve::tangentAt(double station) const
{
    // Over half a millimetre, so that the steps between the samples do not show.
    const double at = std::clamp(station, 0.3, length() - 0.3);
    return normalized(pointAt(at + 0.25) - pointAt(at - 0.25));
}

Vec3 ArchCurve::outwardAt(double station) const
{
    const Vec3 tangent = tangentAt(station);
    return {tangent.y, -tangent.x, 0.0};
}

double ArchCurve::stationOf(const Vec3 &point) const
{
    std::size_t best = 0;
    double least = 1e30;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double d = std::hypot(samples[i].x - point.x, samples[i].y - point.y);
        if (d < least) {
            least = d;
            best = i;
        }
    }
    return stations[best];
}

} // namespace kelo::meshgen
