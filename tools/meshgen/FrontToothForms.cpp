#include "tools/meshgen/ToothForms.h"

namespace kelo::meshgen {

ToothAnatomy upperCentralIncisor()
{
    ToothAnatomy a;
    a.dimensions = {10.5, 8.5, 7.0, 7.0, 6.0, 3.5, 4.75};
    a.anterior = true;
    a.mesial = {0.82, 0.925, 0.985, 0.998, 1.0, 0.985};
    a.distal = {0.82, 0.925, 0.982, 1.0, 0.995, 0.93};
    a.labial = {0.86, 0.93, 0.88, 0.76, 0.60, 0.40};
    a.lingual = {0.86, 0.98, 0.62, 0.28, 0.02, -0.12};
    a.labialSquareness = 2.7;
    a.lingualSquareness = 2.1;
    a.lingualTaper = 0.12;
    a.mesialCornerDrop = 0.35;
    a.distalCornerDrop = 1.0;
    a.cornerPower = 5.0;
    a.mamelons = 0.09;
    a.fossaDepth = 0.9;
    a.marginalRidges = 0.26;
    a.cingulum = 0.30;
    a.labialRidge = 0.16;
    a.wearTilt = 0.25;
    return a;
}

ToothAnatomy upperLateralIncisor()
{
    ToothAnatomy a = upperCentralIncisor();
    a.dimensions = {9.0, 6.5, 5.0, 6.0, 5.0, 3.0, 4.0};
    a.mesial = {0.77, 0.90, 0.97, 0.995, 1.0, 0.96};
    a.distal = {0.77, 0.905, 0.98, 1.0, 0.98, 0.87};
    a.labial = {0.84, 0.92, 0.88, 0.76, 0.60, 0.38};
    a.lingual = {0.84, 0.98, 0.64, 0.30, 0.03, -0.11};
    a.labialSquareness = 2.45;
    a.mesialCornerDrop = 0.55;
    a.distalCornerDrop = 1.35;
    a.cornerPower = 4.0;
    a.mamelons = 0.05;
    a.fossaDepth = 0.95;
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
    a.fossaDepth = 0.55;
    a.marginalRidges = 0.22;
    a.cingulum = 0.28;
    a.labialRidge = 0.34;
    return a;
}

ToothAnatomy lowerCentralIncisor()
{
    ToothAnatomy a;
    a.dimensions = {9.0, 5.0, 3.5, 6.0, 5.3, 3.0, 4.0};
    a.anterior = true;
    a.mesial = {0.73, 0.89, 0.97, 0.997, 1.0, 0.985};
    a.distal = {0.73, 0.89, 0.97, 0.997, 1.0, 0.965};
    a.labial = {0.88, 0.93, 0.80, 0.60, 0.38, 0.16};
    a.lingual = {0.88, 0.98, 0.78, 0.55, 0.34, 0.17};
    a.labialSquareness = 2.6;
    a.lingualSquareness = 2.1;
    a.lingualTaper = 0.10;
    a.mesialCornerDrop = 0.25;
    a.distalCornerDrop = 0.35;
    a.cornerPower = 6.0;
    a.mamelons = 0.06;
    a.fossaDepth = 0.35;
    a.marginalRidges = 0.10;
    a.cingulum = 0.12;
    a.labialRidge = 0.09;
    a.wearTilt = -0.25;
    return a;
}

ToothAnatomy lowerLateralIncisor()
{
    ToothAnatomy a = lowerCentralIncisor();
    a.dimensions = {9.5, 5.5, 4.0, 6.5, 5.8, 3.0, 4.25};
    a.distal = {0.74, 0.895, 0.97, 0.997, 1.0, 0.93};
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
    a.fossaDepth = 0.38;
    a.marginalRidges = 0.14;
    a.cingulum = 0.18;
    a.labialRidge = 0.26;
    return a;
}

} // namespace kelo::meshgen
