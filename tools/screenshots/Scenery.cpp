#include "Scenery.h"

#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>

#include <cmath>
#include <numbers>

namespace corvane {

namespace {

/// A scene being painted. Coordinates are fractions of its width and height, from 0 to 1.
class Canvas {
  public:
    Canvas(QSize size, int seed)
        : image(size, QImage::Format_RGB32),
          random(quint32(seed) * 7919U + 17U),
          painter(&image),
          w(size.width()),
          h(size.height()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
    }

    double uniform(double from, double to) { return from + (to - from) * random.generateDouble(); }

    void gradient(double top, double bottom, const QList<QColor> &colours) {
        QLinearGradient fill(0, top * h, 0, bottom * h);
        for (qsizetype i = 0; i < colours.size(); ++i) {
            fill.setColorAt(double(i) / double(colours.size() - 1), colours[i]);
        }
        painter.fillRect(QRectF(0, top * h, w, (bottom - top) * h), fill);
    }

    void glow(double x, double y, double radius, QColor colour, double strength = 1) {
        QRadialGradient fill(x * w, y * h, radius * w);
        for (const double at : {0.0, 0.1, 0.25, 0.5, 1.0}) {
            colour.setAlphaF(float(strength * std::exp(-5 * at) * (1 - at)));
            fill.setColorAt(at, colour);
        }
        painter.fillRect(image.rect(), fill);
    }

    void blot(double x, double y, double width, double height, QColor colour, double alpha) {
        colour.setAlphaF(float(alpha));
        painter.setBrush(colour);
        painter.drawEllipse(QPointF(x * w, y * h), width * w, height * h);
    }

    /// A line of hills, filled down to `bottom`. `roughness`: amplitude ratio of successive
    /// octaves.
    void ridge(double y, double height, double roughness, const QBrush &fill, double bottom = 1) {
        const double phase = uniform(0, 20);
        QPainterPath path({0, bottom * h});
        for (int x = 0; x <= int(w); x += 2) {
            const double position = x / w;
            double wave = 0;
            double amplitude = 1;
            for (double step = 3; step < 200; step *= 1.9) {
                wave += amplitude * std::sin(position * step + phase * step * 0.37);
                amplitude *= roughness;
            }
            path.lineTo(x, (y - height * (0.5 + 0.32 * wave)) * h);
        }
        path.lineTo(w, bottom * h);
        painter.fillPath(path, fill);
    }

    void clouds(int count, double top, double bottom, const QColor &colour) {
        for (int i = 0; i < count; ++i) {
            const double y = uniform(top, bottom);
            blot(uniform(-0.1, 1.1), y, uniform(0.05, 0.22), uniform(0.002, 0.009), colour,
                 uniform(0.03, 0.13));
        }
    }

    void reeds(int count, const QColor &colour) {
        painter.setBrush(Qt::NoBrush);
        for (int i = 0; i < count; ++i) {
            const double x = uniform(0, 1);
            const double edge = 0.25 + 0.75 * std::pow(std::abs(2 * x - 1), 1.6);
            QPainterPath blade({x * w, h * 1.02});
            const double lean = uniform(-0.018, 0.018);
            blade.quadTo(x * w, (1 - 0.12 * edge) * h, (x + lean) * w,
                         (1 - uniform(0.1, 0.34) * edge) * h);
            painter.setPen(QPen(colour, uniform(0.8, 2.6) * w / 1280, Qt::SolidLine, Qt::RoundCap));
            painter.drawPath(blade);
        }
        painter.setPen(Qt::NoPen);
    }

    QImage image;
    QRandomGenerator random;
    QPainter painter;
    double w;
    double h;
};

void paintGlitter(Canvas &canvas, double x, double top, const QColor &colour) {
    for (int i = 0; i < 420; ++i) {
        const double depth = std::pow(canvas.uniform(0, 1), 1.4);
        const double spread = 0.02 + 0.12 * depth;
        const double y = top + depth * (0.97 - top);
        canvas.blot(x + canvas.uniform(-1, 1) * canvas.uniform(0, spread), y,
                    canvas.uniform(0.002, 0.004 + 0.014 * depth), 0.0012 + 0.0035 * depth, colour,
                    canvas.uniform(0.15, 0.75));
    }
}

void paintBoat(Canvas &canvas, double x, double y, double size) {
    const QColor ink(24, 26, 32);
    canvas.painter.save();
    canvas.painter.translate(x * canvas.w, y * canvas.h);
    canvas.painter.scale(size * canvas.w, size * canvas.w);
    QPainterPath hull({-1, -0.12});
    hull.quadTo(0, 0.28, 1, -0.16);
    hull.quadTo(0.5, 0.02, 0, 0.02);
    hull.quadTo(-0.5, 0.02, -1, -0.12);
    canvas.painter.fillPath(hull, ink);
    canvas.painter.setBrush(ink);
    canvas.painter.drawEllipse(QPointF(0.05, -0.62), 0.1, 0.11);
    canvas.painter.drawRoundedRect(QRectF(-0.1, -0.52, 0.3, 0.56), 0.1, 0.1);
    canvas.painter.setPen(QPen(ink, 0.035));
    canvas.painter.drawLine(QPointF(-0.42, -1.0), QPointF(-0.22, 0.3));
    canvas.painter.setPen(QPen(QColor(24, 26, 32, 90), 0.05));
    for (int i = 0; i < 9; ++i) {
        const double down = 0.2 + 0.09 * i;
        canvas.painter.drawLine(QPointF(-0.28 + 0.02 * i, down),
                                QPointF(0.3 - 0.03 * i, down + 0.02));
    }
    canvas.painter.restore();
}

void paintTide(Canvas &canvas, int seed) {
    const double level = canvas.uniform(0.42, 0.52);
    const double sun = canvas.uniform(0.35, 0.75);
    const QList<QColor> sky{QColor(48, 78, 104), QColor(122, 142, 152), QColor(222, 184, 140),
                            QColor(246, 190, 122)};
    canvas.gradient(0, level, sky);
    canvas.clouds(90, 0, level * 0.8, QColor(246, 214, 178));
    canvas.clouds(60, 0, level * 0.6, QColor(38, 60, 84));
    canvas.glow(sun, level - 0.07, 0.6, QColor(255, 224, 160));
    canvas.blot(sun, level - 0.07, 0.018, 0.032, QColor(255, 250, 228), 1);
    canvas.ridge(level + 0.01, 0.07, 0.5, QColor(139, 134, 152), level + 0.03);
    canvas.ridge(level + 0.02, 0.045, 0.55, QColor(103, 101, 120), level + 0.03);
    canvas.gradient(level, 1, {QColor(214, 178, 142), QColor(140, 142, 146), QColor(52, 70, 84)});
    canvas.clouds(120, level, 0.85, QColor(92, 98, 122));
    canvas.clouds(60, level, 0.95, QColor(240, 200, 150));
    canvas.painter.setClipRect(QRectF(0, level * canvas.h, canvas.w, canvas.h));
    canvas.glow(sun, level + 0.05, 0.45, QColor(255, 214, 150), 0.6);
    canvas.painter.setClipping(false);
    paintGlitter(canvas, sun, level + 0.03, QColor(255, 238, 200));
    if (seed % 3 != 1) {
        paintBoat(canvas, sun - canvas.uniform(0.2, 0.3), level + canvas.uniform(0.1, 0.18), 0.085);
    }
    canvas.reeds(340, QColor(22, 27, 32));
}

void paintGate(Canvas &canvas, int seed) {
    const QImage beyond = paintScene(Scene::Tide, seed + 40, QSize(int(canvas.w), int(canvas.h)));
    canvas.gradient(0, 1, {QColor(34, 25, 20), QColor(52, 38, 29), QColor(20, 15, 13)});
    for (double x = 0; x < 1; x += 0.055) {
        canvas.painter.fillRect(QRectF(x * canvas.w, 0, canvas.w * 0.003, canvas.h),
                                QColor(10, 7, 6));
        canvas.painter.fillRect(
            QRectF((x + 0.004) * canvas.w, 0, canvas.w * canvas.uniform(0.01, 0.045), canvas.h),
            QColor(96, 70, 50, int(canvas.uniform(8, 34))));
    }
    const double width = canvas.uniform(0.2, 0.46);
    const double left = 0.5 - width / 2;
    canvas.glow(0.5, 0.5, 0.8, QColor(214, 160, 100), 0.5);
    canvas.painter.drawImage(
        QRectF(left * canvas.w, 0.06 * canvas.h, width * canvas.w, 0.9 * canvas.h), beyond,
        QRectF(canvas.w * 0.4, 0, width * canvas.w, canvas.h));
    if (seed % 2 == 0) {
        canvas.blot(0.54, 0.42, 0.018, 0.036, QColor(14, 14, 17), 1);
        canvas.painter.setBrush(QColor(14, 14, 17));
        canvas.painter.drawRoundedRect(
            QRectF(0.51 * canvas.w, 0.46 * canvas.h, 0.06 * canvas.w, 0.52 * canvas.h),
            0.03 * canvas.w, 0.03 * canvas.w);
    }
}

void paintLantern(Canvas &canvas, int) {
    canvas.gradient(0, 1, {QColor(20, 17, 20), QColor(38, 27, 24), QColor(17, 13, 13)});
    for (int i = 0; i < 34; ++i) {
        const double size = canvas.uniform(0.008, 0.032);
        canvas.blot(
            canvas.uniform(0, 1), canvas.uniform(0.1, 0.9), size, size * canvas.w / canvas.h,
            QColor::fromHsv(int(canvas.uniform(18, 44)), 150, 220), canvas.uniform(0.04, 0.2));
    }
    const double x = canvas.uniform(0.38, 0.62);
    canvas.glow(x, 0.54, 0.55, QColor(255, 172, 84), 0.95);
    const QRectF body((x - 0.055) * canvas.w, 0.36 * canvas.h, 0.11 * canvas.w, 0.36 * canvas.h);
    QLinearGradient light(body.topLeft(), body.bottomLeft());
    light.setColorAt(0, QColor(120, 62, 26));
    light.setColorAt(0.55, QColor(255, 222, 150));
    light.setColorAt(1, QColor(166, 88, 34));
    canvas.painter.setPen(QPen(QColor(26, 19, 16), canvas.w * 0.007));
    canvas.painter.setBrush(light);
    canvas.painter.drawRoundedRect(body, 12, 12);
    canvas.painter.drawLine(QPointF(x * canvas.w, body.top()),
                            QPointF(x * canvas.w, body.bottom()));
    canvas.painter.setBrush(Qt::NoBrush);
    canvas.painter.drawArc(body.adjusted(0, -body.height() * 0.4, 0, -body.height() * 0.6), 0,
                           180 * 16);
    canvas.painter.setPen(Qt::NoPen);
}

void paintForest(Canvas &canvas, int) {
    canvas.gradient(0, 1, {QColor(196, 208, 186), QColor(154, 170, 144), QColor(72, 84, 62)});
    canvas.glow(canvas.uniform(0.3, 0.7), 0.25, 0.7, QColor(250, 250, 226), 0.8);
    for (int layer = 0; layer < 4; ++layer) {
        const double near = layer / 3.0;
        for (int i = 0; i < 16 - 3 * layer; ++i) {
            const double width = (0.006 + 0.03 * near * near) * canvas.uniform(0.7, 1.4);
            QColor bark(int(120 - 98 * near), int(132 - 106 * near), int(110 - 90 * near));
            bark.setAlphaF(float(0.35 + 0.65 * near));
            canvas.painter.save();
            canvas.painter.translate(canvas.uniform(0, 1) * canvas.w, 0);
            canvas.painter.shear(canvas.uniform(-0.04, 0.04), 0);
            canvas.painter.fillRect(QRectF(0, 0, width * canvas.w, (0.72 + 0.25 * near) * canvas.h),
                                    bark);
            canvas.painter.restore();
        }
        canvas.gradient(0.55, 1, {QColor(150, 168, 140, 0), QColor(96, 112, 80, 90)});
    }
    canvas.ridge(0.97, 0.08, 0.7, QColor(24, 30, 21));
}

void paintSea(Canvas &canvas, int) {
    const double level = canvas.uniform(0.3, 0.42);
    canvas.gradient(0, level, {QColor(78, 92, 104), QColor(136, 150, 158), QColor(178, 188, 190)});
    canvas.clouds(140, 0, level, QColor(52, 62, 72));
    canvas.gradient(level, 1, {QColor(118, 138, 144), QColor(58, 84, 94), QColor(20, 36, 46)});
    for (int i = 0; i < 900; ++i) {
        const double depth = std::pow(canvas.uniform(0, 1), 1.7);
        const bool isCrest = canvas.uniform(0, 1) < 0.3;
        canvas.blot(canvas.uniform(0, 1), level + depth * (1 - level), 0.006 + 0.05 * depth,
                    0.0012 + 0.006 * depth, isCrest ? QColor(206, 218, 218) : QColor(18, 40, 52),
                    canvas.uniform(0.05, isCrest ? 0.22 : 0.32));
    }
}

void paintPeaks(Canvas &canvas, int seed) {
    const bool isMisty = seed % 2 == 0;
    canvas.gradient(0, 1,
                    isMisty ? QList<QColor>{QColor(122, 142, 150), QColor(196, 206, 204)}
                            : QList<QColor>{QColor(38, 84, 140), QColor(168, 198, 222)});
    canvas.clouds(80, 0.02, 0.5, QColor(240, 244, 248));
    if (!isMisty) {
        QLinearGradient snow(0, 0.15 * canvas.h, 0, 0.85 * canvas.h);
        snow.setColorAt(0, QColor(250, 252, 255));
        snow.setColorAt(0.45, QColor(150, 168, 190));
        snow.setColorAt(1, QColor(52, 62, 78));
        canvas.ridge(0.66, 0.5, 0.62, snow);
    }
    for (int i = 0; i < 5; ++i) {
        const double near = i / 4.0;
        const int value = int(isMisty ? 170 - 132 * near : 96 - 64 * near);
        canvas.ridge(0.62 + 0.1 * i, 0.16, 0.6, QColor(value - 12, value, value + 4));
        canvas.gradient(0.5 + 0.1 * i, 0.8 + 0.1 * i,
                        {QColor(214, 222, 220, 0), QColor(214, 222, 220, isMisty ? 70 : 24)});
    }
}

void paintCity(Canvas &canvas, int) {
    canvas.gradient(0, 0.62, {QColor(10, 12, 26), QColor(26, 26, 52), QColor(62, 44, 70)});
    canvas.gradient(0.62, 1, {QColor(24, 22, 44), QColor(8, 9, 18)});
    for (int i = 0; i < 70; ++i) {
        const double x = canvas.uniform(0, 1);
        const double y = 0.62 - 0.2 * std::pow(canvas.uniform(0, 1), 2);
        const QColor colour = QColor::fromHsv(
            int(canvas.uniform(0, 1) < 0.6 ? canvas.uniform(20, 50) : canvas.uniform(180, 340)),
            int(canvas.uniform(90, 200)), 255);
        const double size = canvas.uniform(0.004, 0.016);
        canvas.glow(x, y, size * 5, colour, 0.35);
        canvas.blot(x, y, size, size * canvas.w / canvas.h, colour, canvas.uniform(0.35, 0.8));
        for (int k = 0; k < 7; ++k) {
            canvas.blot(x + canvas.uniform(-0.004, 0.004), 1.24 - y + 0.028 * k, size * 1.3, 0.004,
                        colour, 0.22 - 0.025 * k);
        }
    }
}

void paintDunes(Canvas &canvas, int) {
    canvas.gradient(0, 1, {QColor(116, 150, 178), QColor(226, 204, 172), QColor(230, 190, 138)});
    canvas.glow(canvas.uniform(0.2, 0.8), 0.3, 0.5, QColor(255, 240, 206), 0.7);
    for (int i = 0; i < 5; ++i) {
        const double y = 0.46 + 0.13 * i;
        QLinearGradient sand(0, (y - 0.15) * canvas.h, canvas.w * 0.5, (y + 0.3) * canvas.h);
        sand.setColorAt(0, QColor(236 - 14 * i, 184 - 16 * i, 122 - 16 * i));
        sand.setColorAt(1, QColor(150 - 20 * i, 94 - 14 * i, 58 - 9 * i));
        canvas.ridge(y, 0.2, 0.28, sand);
    }
}

} // namespace

QImage paintScene(Scene scene, int seed, QSize size) {
    Canvas canvas(size, seed);
    using Paint = void (*)(Canvas &, int);
    constexpr Paint paints[] = {paintTide, paintGate,  paintLantern, paintForest,
                                paintSea,  paintPeaks, paintCity,    paintDunes};
    paints[int(scene)](canvas, seed);
    canvas.painter.end();
    return canvas.image;
}

} // namespace corvane
