#pragma once

#include "plotkit/layout/PlotEnvelope.h"
#include "plotkit/raster/PolylineRasteriser.h"
#include "tests/plotkit/layout/SeriesBuilder.h"

#include <QtGui/QImage>
#include <gtest/gtest.h>

#include <cstdlib>

/// Draws a series in two ways and says how far the pictures lie apart: a reduction is right when its picture is the one
/// that drawing every point gives.
class LinePictureTest : public testing::Test {
protected:
    static constexpr int kWidth = 300;
    static constexpr int kHeight = 160;

    LinePictureTest() { view.area = QRectF(0, 0, kWidth, kHeight); }

    QPointF placeOf(std::size_t element) const
    {
        return {(builder.x()[element] - view.xRange.location) / view.xRange.length * kWidth,
                kHeight -
                    (static_cast<double>(builder.y()[element]) - view.yRange.location) / view.yRange.length * kHeight};
    }

    static QImage emptyImage()
    {
        QImage image(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        return image;
    }

    static plotkit::PixelBuffer bufferOf(QImage& image)
    {
        return {reinterpret_cast<quint32*>(image.bits()), kWidth, kHeight, image.bytesPerLine() / 4};
    }

    /// Of the pixels that either picture touched, at most one in `farOff` differs by more than half; all of them by no
    /// more than `mean` of 255 on the average.
    static void expectSame(const QImage& drawn, const QImage& expected, int farOff, int mean = 4)
    {
        int touched = 0, sum = 0, far = 0;
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x) {
                const int a = qAlpha(drawn.pixel(x, y)), b = qAlpha(expected.pixel(x, y));
                touched += a != 0 || b != 0 ? 1 : 0;
                sum += std::abs(a - b);
                far += std::abs(a - b) > 128 ? 1 : 0;
            }
        EXPECT_GT(touched, 0);
        EXPECT_LE(sum, mean * touched) << "mean over " << touched;
        EXPECT_LE(far * farOff, touched) << far;
    }

    const CPTPointSeriesPtr& series()
    {
        if (!m_series)
            m_series = builder.series();
        return m_series;
    }

    SeriesBuilder builder;
    plotkit::PlotView view;
    plotkit::PlotEnveloping enveloping;
    plotkit::PlotEnvelope envelope;
    plotkit::PolylineRasteriser rasteriser;

private:
    CPTPointSeriesPtr m_series;
};
