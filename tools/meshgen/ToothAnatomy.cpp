#include "tools/meshgen/ToothAnatomy.h"

#include <stdexcept>
#include <string>

namespace kelo::meshgen {

namespace {

ToothAnatomy upperCentralIncisor()
{
    ToothAnatomy a;
    a.dimensions = {10.5, 8.5, 7.0, 7.0, 6.0, 3.5, 4.75};
    a.anterior = true;
    a.mesial = {0.82, 0.91, 0.965, 0.99, 1.0, 0.985};
    a.distal = {0.82, 0.92, 0.975, 1.0, 0.99, 0.93};
    a.labial = {0.86, 0.93, 0.88, 0.76, 0.60, 0.40};
    a.lingual = {0.86, 0.98, 0.62, 0.28, 0.02, -0.12};
    a.labialSquareness = 2.7;
    a.lingualSquareness = 2.1;
    a.lingualTaper = 0.12;
    a.mesialCornerDrop = 0.35;
    a.distalCornerDrop = 1.0;
    a.cornerPower = 5.0;
    a.mamelons = 0.07;
    a.fossaDepth = 0.75;
    a.labialRidge = 0.06;
    return a;
}

ToothAnatomy upperLateralIncisor()
{
    ToothAnatomy a = upperCentralIncisor();
    a.dimensions = {9.0, 6.5, 5.0, 6.0, 5.0, 3.0, 4.0};
    a.mesial = {0.77, 0.89, 0.95, 0.985, 1.0, 0.96};
    a.distal = {0.77, 0.90, 0.97, 1.0, 0.97, 0.87};
    a.labial = {0.84, 0.92, 0.88, 0.76, 0.60, 0.38};
    a.lingual = {0.84, 0.98, 0.64, 0.30, 0.03, -0.11};
    a.labialSquareness = 2.45;
    a.mesialCornerDrop = 0.55;
    a.distalCornerDrop = 1.35;
    a.cornerPower = 4.0;
    a.mamelons = 0.04;
    a.fossaDepth = 0.8;
    return a;
}

ToothAnatomy upperCanine()
{
    ToothAnatomy a;
    a.dimensions = {10.0, 7.5, 5.5, 8.0, 7.0, 2.5, 4.5};
    a.anterior = true;
    a.mesial = {0.74, 0.88, 0.96, 1.0, 1.0, 0.78};
    a.distal = {0.74, 0.90, 0.985, 1.0, 0.97, 0.74};
    a.labial = {0.87, 0.96, 0.93, 0.80, 0.60, 0.32};
    a.lingual = {0.87, 1.0, 0.75, 0.46, 0.16, -0.06};
    a.labialSquareness = 2.1;
    a.lingualSquareness = 2.1;
    a.lingualTaper = 0.16;
    a.mesialCornerDrop = 1.7;
    a.distalCornerDrop = 2.3;
    a.cornerPower = 1.25;
    a.tipShift = 0.10;
    a.fossaDepth = 0.5;
    a.labialRidge = 0.30;
    return a;
}

ToothAnatomy upperFirstPremolar()
{
    ToothAnatomy a;
    a.dimensions = {8.5, 7.0, 5.0, 9.0, 8.0, 1.0, 3.75};
    a.mesial = {0.72, 0.89, 0.97, 1.0, 0.995, 0.88};
    a.distal = {0.72, 0.89, 0.97, 1.0, 0.99, 0.88};
    a.labial = {0.89, 0.98, 1.0, 0.96, 0.87, 0.72};
    a.lingual = {0.89, 0.96, 1.0, 0.98, 0.90, 0.74};
    a.labialSquareness = 2.7;
    a.lingualSquareness = 2.45;
    a.lingualTaper = 0.14;
    a.labialRidge = 0.18;
    a.cusps = {{-0.04, 0.56, 0.0, 0.62, 0.95, 1.7}, {0.12, -0.54, 1.0, 0.5, 0.8, 1.3}};
    a.ridges = {{0.76, 0.40, 0.76, -0.38, 1.75, 0.9}, {-0.76, 0.40, -0.76, -0.38, 1.8, 0.9}};
    a.grooves = {{0.72, 0.02, -0.55, 0.02, 0.35},
                 {0.42, 0.02, 0.62, 0.34, 0.2},
                 {-0.42, 0.02, -0.62, 0.34, 0.2}};
    return a;
}

ToothAnatomy upperSecondPremolar()
{
    ToothAnatomy a = upperFirstPremolar();
    a.lingualTaper = 0.06;
    a.labialRidge = 0.12;
    a.cusps = {{0.04, 0.54, 0.0, 0.55, 0.85, 1.6}, {0.08, -0.54, 0.2, 0.5, 0.8, 1.4}};
    a.ridges = {{0.76, 0.40, 0.76, -0.40, 1.45, 0.9}, {-0.76, 0.40, -0.76, -0.40, 1.5, 0.9}};
    a.grooves = {{0.42, 0.0, -0.42, 0.0, 0.35},
                 {0.40, 0.0, 0.60, 0.30, 0.2},
                 {-0.40, 0.0, -0.60, 0.30, 0.2},
                 {0.40, 0.0, 0.58, -0.30, 0.15},
                 {-0.40, 0.0, -0.58, -0.30, 0.15}};
    return a;
}

ToothAnatomy upperFirstMolar()
{
    ToothAnatomy a;
    a.dimensions = {7.5, 10.0, 8.0, 11.0, 10.0, 1.0, 3.25};
    a.mesial = {0.81, 0.92, 0.98, 1.0, 0.99, 0.89};
    a.distal = {0.81, 0.92, 0.98, 1.0, 0.98, 0.89};
    a.labial = {0.91, 0.99, 1.0, 0.96, 0.88, 0.77};
    a.lingual = {0.91, 0.97, 1.0, 0.98, 0.92, 0.79};
    a.labialSquareness = 3.2;
    a.lingualSquareness = 2.9;
    a.lingualTaper = -0.02;
    a.rhomboid = 0.13;
    a.cusps = {{0.42, 0.60, 0.0, 0.52, 0.72, 1.5},
               {-0.44, 0.58, 0.25, 0.55, 0.75, 1.5},
               {0.34, -0.50, 0.0, 0.48, 0.62, 1.3},
               {-0.50, -0.58, 0.75, 0.65, 0.85, 1.4},
               {0.40, -0.86, 2.7, 0.7, 0.5, 1.6}};
    a.ridges = {{0.80, 0.50, 0.80, -0.42, 1.35, 0.9},
                {-0.80, 0.42, -0.80, -0.44, 1.45, 0.9},
                {0.26, -0.40, -0.38, 0.46, 1.15, 0.9}};
    a.grooves = {{0.60, 0.04, 0.02, 0.08, 0.35},
                 {0.02, 0.08, 0.0, 0.80, 0.3},
                 {-0.60, -0.05, -0.10, -0.80, 0.35},
                 {-0.60, -0.05, -0.66, 0.14, 0.2},
                 {0.60, 0.04, 0.70, 0.30, 0.15}};
    return a;
}

ToothAnatomy upperSecondMolar()
{
    ToothAnatomy a = upperFirstMolar();
    a.dimensions = {7.0, 9.0, 7.0, 11.0, 10.0, 1.0, 3.0};
    a.mesial = {0.79, 0.91, 0.975, 1.0, 0.98, 0.87};
    a.distal = {0.79, 0.91, 0.975, 1.0, 0.97, 0.86};
    a.lingualTaper = 0.08;
    a.rhomboid = 0.17;
    a.cusps = {{0.42, 0.58, 0.0, 0.52, 0.72, 1.5},
               {-0.44, 0.54, 0.45, 0.55, 0.75, 1.5},
               {0.26, -0.52, 0.15, 0.48, 0.62, 1.3},
               {-0.54, -0.54, 1.25, 0.65, 0.85, 1.4}};
    return a;
}

ToothAnatomy lowerCentralIncisor()
{
    ToothAnatomy a;
    a.dimensions = {9.0, 5.0, 3.5, 6.0, 5.3, 3.0, 4.0};
    a.anterior = true;
    a.mesial = {0.73, 0.875, 0.95, 0.985, 1.0, 0.99};
    a.distal = {0.73, 0.875, 0.95, 0.985, 1.0, 0.97};
    a.labial = {0.88, 0.93, 0.80, 0.60, 0.38, 0.16};
    a.lingual = {0.88, 0.98, 0.78, 0.55, 0.34, 0.17};
    a.labialSquareness = 2.6;
    a.lingualSquareness = 2.1;
    a.lingualTaper = 0.10;
    a.mesialCornerDrop = 0.25;
    a.distalCornerDrop = 0.35;
    a.cornerPower = 6.0;
    a.mamelons = 0.05;
    a.fossaDepth = 0.3;
    a.labialRidge = 0.04;
    return a;
}

ToothAnatomy lowerLateralIncisor()
{
    ToothAnatomy a = lowerCentralIncisor();
    a.dimensions = {9.5, 5.5, 4.0, 6.5, 5.8, 3.0, 4.25};
    a.distal = {0.74, 0.885, 0.96, 0.99, 1.0, 0.93};
    a.distalCornerDrop = 0.65;
    a.cornerPower = 5.0;
    return a;
}

ToothAnatomy lowerCanine()
{
    ToothAnatomy a = upperCanine();
    a.dimensions = {11.0, 7.0, 5.5, 7.5, 7.0, 2.5, 5.0};
    a.mesial = {0.79, 0.90, 0.965, 0.99, 1.0, 0.82};
    a.distal = {0.79, 0.905, 0.975, 1.0, 0.98, 0.74};
    a.labial = {0.93, 0.99, 0.90, 0.74, 0.52, 0.25};
    a.lingual = {0.93, 1.0, 0.80, 0.57, 0.33, 0.07};
    a.mesialCornerDrop = 1.2;
    a.distalCornerDrop = 2.1;
    a.tipShift = 0.14;
    a.fossaDepth = 0.35;
    a.labialRidge = 0.2;
    return a;
}

ToothAnatomy lowerFirstPremolar()
{
    ToothAnatomy a;
    a.dimensions = {8.5, 7.0, 5.0, 7.5, 6.5, 1.0, 3.75};
    a.mesial = {0.72, 0.89, 0.97, 1.0, 0.98, 0.84};
    a.distal = {0.72, 0.89, 0.97, 1.0, 0.99, 0.86};
    a.labial = {0.87, 0.98, 1.0, 0.93, 0.79, 0.58};
    a.lingual = {0.87, 0.93, 0.98, 1.0, 0.97, 0.86};
    a.labialSquareness = 2.5;
    a.lingualSquareness = 2.2;
    a.lingualTaper = 0.22;
    a.lean = -0.5;
    a.labialRidge = 0.18;
    a.cusps = {{0.02, 0.26, 0.0, 0.62, 0.85, 1.5}, {0.10, -0.66, 2.2, 0.45, 0.6, 1.2}};
    a.ridges = {{0.74, 0.22, 0.62, -0.50, 2.0, 0.8}, {-0.74, 0.22, -0.64, -0.50, 1.8, 0.8}};
    a.grooves = {{0.48, -0.14, -0.48, -0.20, 0.25}, {0.46, -0.14, 0.50, -0.62, 0.2}};
    return a;
}

ToothAnatomy lowerSecondPremolar()
{
    ToothAnatomy a = lowerFirstPremolar();
    a.dimensions = {8.0, 7.0, 5.0, 8.0, 7.0, 1.0, 3.5};
    a.labial = {0.87, 0.98, 1.0, 0.94, 0.82, 0.64};
    a.lingual = {0.87, 0.94, 0.99, 1.0, 0.95, 0.80};
    a.labialSquareness = 2.7;
    a.lingualSquareness = 2.6;
    a.lingualTaper = 0.06;
    a.cusps = {{0.06, 0.42, 0.0, 0.55, 0.8, 1.5},
               {0.34, -0.56, 0.9, 0.65, 0.75, 1.2},
               {-0.42, -0.54, 1.3, 0.65, 0.75, 1.2}};
    a.ridges = {{0.76, 0.32, 0.74, -0.42, 1.6, 0.9}, {-0.76, 0.32, -0.74, -0.42, 1.7, 0.9}};
    a.grooves = {{0.52, -0.02, -0.06, -0.10, 0.3},
                 {-0.06, -0.10, -0.54, 0.0, 0.3},
                 {-0.06, -0.10, -0.06, -0.78, 0.3}};
    return a;
}

ToothAnatomy lowerFirstMolar()
{
    ToothAnatomy a;
    a.dimensions = {7.5, 11.0, 9.0, 10.5, 9.0, 1.0, 3.25};
    a.mesial = {0.82, 0.93, 0.985, 1.0, 0.99, 0.89};
    a.distal = {0.82, 0.93, 0.985, 1.0, 0.98, 0.87};
    a.labial = {0.86, 0.98, 1.0, 0.94, 0.84, 0.70};
    a.lingual = {0.86, 0.92, 0.97, 1.0, 0.97, 0.85};
    a.labialSquareness = 3.0;
    a.lingualSquareness = 3.0;
    a.lingualTaper = 0.08;
    a.lean = -0.8;
    a.cusps = {{0.54, 0.46, 0.15, 0.6, 0.75, 1.3},
               {-0.06, 0.52, 0.2, 0.6, 0.75, 1.3},
               {-0.60, 0.34, 0.75, 0.65, 0.75, 1.3},
               {0.44, -0.60, 0.0, 0.58, 0.78, 1.5},
               {-0.42, -0.60, 0.2, 0.58, 0.78, 1.5}};
    a.ridges = {{0.82, 0.40, 0.82, -0.46, 1.5, 0.9}, {-0.80, 0.26, -0.80, -0.46, 1.6, 0.9}};
    a.grooves = {{0.62, -0.04, 0.0, -0.02, 0.35},
                 {0.0, -0.02, -0.62, -0.06, 0.35},
                 {0.22, 0.0, 0.25, 0.74, 0.3},
                 {-0.22, 0.0, -0.37, 0.70, 0.3},
                 {0.0, -0.02, 0.02, -0.84, 0.3}};
    return a;
}

ToothAnatomy lowerSecondMolar()
{
    ToothAnatomy a = lowerFirstMolar();
    a.dimensions = {7.0, 10.5, 8.0, 10.0, 9.0, 1.0, 3.0};
    a.mesial = {0.78, 0.91, 0.975, 1.0, 0.98, 0.88};
    a.distal = {0.78, 0.91, 0.975, 1.0, 0.98, 0.87};
    a.labial = {0.90, 0.98, 1.0, 0.94, 0.84, 0.70};
    a.lingual = {0.90, 0.94, 0.98, 1.0, 0.97, 0.84};
    a.cusps = {{0.44, 0.48, 0.1, 0.55, 0.75, 1.3},
               {-0.44, 0.46, 0.3, 0.55, 0.75, 1.3},
               {0.44, -0.58, 0.0, 0.55, 0.75, 1.5},
               {-0.44, -0.58, 0.2, 0.55, 0.75, 1.5}};
    a.grooves = {{0.60, -0.04, -0.60, -0.04, 0.35},
                 {0.0, -0.04, 0.0, 0.74, 0.3},
                 {0.0, -0.04, 0.0, -0.84, 0.3}};
    return a;
}

} // namespace

int positionFromMidline(int toothNumber)
{
    if (toothNumber >= 2 && toothNumber <= 8) return 9 - toothNumber;
    if (toothNumber >= 9 && toothNumber <= 15) return toothNumber - 8;
    if (toothNumber >= 18 && toothNumber <= 24) return 25 - toothNumber;
    if (toothNumber >= 25 && toothNumber <= 31) return toothNumber - 24;
    throw std::out_of_range("There is no tooth " + std::to_string(toothNumber));
}

bool isRightSide(int toothNumber)
{
    return toothNumber <= 8 || toothNumber >= 25;
}

ToothAnatomy toothAnatomy(int toothNumber)
{
    using Maker = ToothAnatomy (*)();
    static constexpr std::array<Maker, 7> upper = {
        upperCentralIncisor, upperLateralIncisor, upperCanine,     upperFirstPremolar,
        upperSecondPremolar, upperFirstMolar,     upperSecondMolar};
    static constexpr std::array<Maker, 7> lower = {
        lowerCentralIncisor, lowerLateralIncisor, lowerCanine,     lowerFirstPremolar,
        lowerSecondPremolar, lowerFirstMolar,     lowerSecondMolar};
    const auto index = static_cast<std::size_t>(positionFromMidline(toothNumber) - 1);
    return toothNumber <= 15 ? upper[index]() : lower[index]();
}

} // namespace kelo::meshgen
