#include "display/stroke.h"

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

float distanceTo(const Point& from, const Point& to, const Point& point) {
    const float dx = to.x - from.x;
    const float dy = to.y - from.y;
    const float along = ((point.x - from.x) * dx + (point.y - from.y) * dy) / (dx * dx + dy * dy);
    const float nearest = std::clamp(along, 0.0F, 1.0F);
    const float x = point.x - from.x - nearest * dx;
    const float y = point.y - from.y - nearest * dy;
    return std::sqrt(x * x + y * y);
}

Rect boundsOf(const Point* points, int count, float margin) {
    Rect bounds;
    for (int i = 0; i < count; ++i)
        bounds = united(
            bounds,
            {static_cast<int>(std::floor(points[i].x - margin)), static_cast<int>(std::floor(points[i].y - margin)),
             static_cast<int>(std::ceil(points[i].x + margin)), static_cast<int>(std::ceil(points[i].y + margin))});
    return bounds;
}

} // namespace

void strokeThrough(const Canvas& canvas, const Point* points, int count, float thickness, uint16_t colour) {
    const Rect part = intersection(boundsOf(points, count, thickness / 2 + 1), canvas.clip);
    for (int y = part.top; y < part.bottom; ++y) {
        for (int x = part.left; x < part.right; ++x) {
            const Point centre{static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F};
            float distance = distanceTo(points[0], points[1], centre);
            for (int i = 2; i < count; ++i)
                distance = std::min(distance, distanceTo(points[i - 1], points[i], centre));
            const float inside = std::clamp(thickness / 2 - distance + 0.5F, 0.0F, 1.0F);
            uint16_t& pixel = canvas.row(y)[x];
            pixel = mixed(pixel, colour, static_cast<int>(std::lround(inside * 255.0F)));
        }
    }
}

} // namespace ostrel
