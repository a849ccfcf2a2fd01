#pragma once

#include <QImage>

/// Painted landscapes for the sample clips.
namespace corvane {

enum class Scene { Tide, Gate, Lantern, Forest, Sea, Peaks, City, Dunes };

/// Paints a scene. The seed varies its light and shapes; equal arguments give equal images.
QImage paintScene(Scene scene, int seed, QSize size);

} // namespace corvane
