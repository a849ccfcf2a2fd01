#pragma once

#include <QImage>

/// What the clips of the pictures show: landscapes, painted rather than filmed, so that the tool
/// needs no footage.
namespace corvane {

enum class Scene { Tide, Gate, Lantern, Forest, Sea, Peaks, City, Dunes };

/// The same for the same seed. Another seed gives another light and another lie of the land.
QImage paintedScene(Scene scene, int seed, QSize size);

} // namespace corvane
