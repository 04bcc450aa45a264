#include "tools/meshgen/ToothForms.h"

namespace kelo::meshgen {

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
    // The buccal tip stands a little distal of the middle, the lower lingual one mesial of it.
    a.cusps = {{-0.06, 0.56, 0.0, 0.62, 0.72, 1.7}, {0.14, -0.54, 1.0, 0.5, 0.62, 1.3}};
    a.ridges = {{{{0.70, 0.42}, {0.80, 0.05}, {0.74, -0.38}}, 1.85, 1.0},
                {{{-0.72, 0.42}, {-0.81, 0.05}, {-0.74, -0.38}}, 1.85, 1.0}};
    // One long groove, which here crosses the mesial marginal ridge; the pits fork.
    a.grooves = {{{{0.56, 0.04}, {0.0, 0.0}, {-0.56, 0.04}}, 0.70, 0.85},
                 {{{0.56, 0.04}, {0.92, 0.02}}, 0.30, 0.45},
                 {{{0.56, 0.04}, {0.66, 0.32}}, 0.35, 0.50},
                 {{{-0.56, 0.04}, {-0.66, 0.32}}, 0.35, 0.50},
                 {{{0.56, 0.04}, {0.64, -0.24}}, 0.25, 0.45},
                 {{{-0.56, 0.04}, {-0.62, -0.24}}, 0.25, 0.45}};
    return a;
}

ToothAnatomy upperSecondPremolar()
{
    // Both cusps nearly equal, a shorter groove and more wrinkles beside it.
    ToothAnatomy a = upperFirstPremolar();
    a.lingualTaper = 0.06;
    a.labialRidge = 0.12;
    a.cusps = {{0.04, 0.54, 0.0, 0.55, 0.66, 1.6}, {0.08, -0.54, 0.2, 0.5, 0.62, 1.4}};
    a.ridges = {{{{0.70, 0.42}, {0.80, 0.05}, {0.74, -0.40}}, 1.55, 1.0},
                {{{-0.70, 0.42}, {-0.81, 0.05}, {-0.74, -0.40}}, 1.6, 1.0}};
    a.grooves = {{{{0.44, 0.02}, {0.0, -0.02}, {-0.44, 0.02}}, 0.70, 0.85},
                 {{{0.44, 0.02}, {0.64, 0.28}}, 0.40, 0.50},
                 {{{-0.44, 0.02}, {-0.64, 0.28}}, 0.40, 0.50},
                 {{{0.44, 0.02}, {0.62, -0.26}}, 0.35, 0.50},
                 {{{-0.44, 0.02}, {-0.62, -0.26}}, 0.35, 0.50},
                 {{{0.16, -0.01}, {0.26, 0.24}}, 0.20, 0.40},
                 {{{-0.14, -0.01}, {-0.22, -0.26}}, 0.20, 0.40}};
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
    a.cusps = {{0.02, 0.26, 0.0, 0.62, 0.80, 1.5, 0.0, 0.05}, {0.06, -0.66, 2.2, 0.45, 0.6, 1.2}};
    // The transverse ridge from the buccal to the low lingual cusp parts a mesial from a distal
    // pit; the mesiolingual groove runs out beside the lingual cusp.
    a.ridges = {{{{0.70, 0.20}, {0.80, -0.14}, {0.56, -0.54}}, 2.0, 0.9},
                {{{-0.70, 0.20}, {-0.82, -0.16}, {-0.58, -0.54}}, 1.9, 0.9},
                {{{0.02, 0.10}, {0.05, -0.50}}, 1.75, 0.9}};
    a.grooves = {{{{0.50, 0.04}, {0.38, -0.20}, {0.44, -0.46}}, 0.60, 0.80},
                 {{{0.44, -0.46}, {0.48, -0.90}}, 0.40, 0.60},
                 {{{-0.54, 0.06}, {-0.40, -0.20}, {-0.42, -0.48}}, 0.60, 0.80}};
    a.furrows = {{0.40, -1.0, 0.25, 0.7, 0.5}};
    return a;
}

ToothAnatomy lowerSecondPremolar()
{
    // One buccal and two lingual cusps with a Y between them.
    ToothAnatomy a = lowerFirstPremolar();
    a.dimensions = {8.0, 7.0, 5.0, 8.0, 7.0, 1.0, 3.5};
    a.labial = {0.87, 0.98, 1.0, 0.94, 0.82, 0.64};
    a.lingual = {0.87, 0.94, 0.99, 1.0, 0.95, 0.80};
    a.labialSquareness = 2.7;
    a.lingualSquareness = 2.6;
    a.lingualTaper = 0.06;
    a.cusps = {{0.06, 0.42, 0.0, 0.55, 0.68, 1.5},
               {0.32, -0.56, 0.9, 0.62, 0.62, 1.2},
               {-0.44, -0.54, 1.3, 0.65, 0.65, 1.2}};
    a.ridges = {{{{0.72, 0.32}, {0.80, -0.05}, {0.72, -0.42}}, 1.75, 1.0},
                {{{-0.72, 0.32}, {-0.81, -0.05}, {-0.72, -0.42}}, 1.8, 1.0}};
    a.grooves = {{{{0.56, 0.02}, {0.24, -0.04}, {-0.08, -0.10}}, 0.64, 0.78},
                 {{{-0.08, -0.10}, {-0.34, -0.04}, {-0.58, 0.02}}, 0.64, 0.78},
                 {{{-0.08, -0.10}, {-0.06, -0.45}, {-0.06, -0.88}}, 0.60, 0.74},
                 {{{0.56, 0.02}, {0.66, 0.24}}, 0.30, 0.45},
                 {{{-0.58, 0.02}, {-0.66, 0.24}}, 0.30, 0.45},
                 {{{0.56, 0.02}, {0.66, -0.24}}, 0.25, 0.45},
                 {{{-0.58, 0.02}, {-0.66, -0.22}}, 0.25, 0.45}};
    a.furrows = {{-0.06, -1.0, 0.25, 0.7, 0.5}};
    return a;
}

} // namespace kelo::meshgen
