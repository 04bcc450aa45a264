#pragma once

namespace kelo::meshgen {

/// How far the forms of the hard palate stand out of its smooth vault towards the mouth, in
/// millimetres: the incisive papilla, the rugae behind it and the raphe along the middle.
/// `toTheLeft` is the place across, 0 on the middle line; `behind` the place along, measured from
/// the lingual gum margin of the central incisors.
double palateRelief(double toTheLeft, double behind);

} // namespace kelo::meshgen
