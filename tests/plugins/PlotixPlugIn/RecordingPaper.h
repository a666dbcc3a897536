#pragma once

#include <QtGui/QPaintDevice>
#include <QtGui/QPaintEngine>

#include <vector>

/// A sheet that keeps the texts drawn on it, each with its look and the point its baseline begins at (y downward). One
/// unit is one point; everything else drawn is ignored.
class RecordingPaper : public QPaintDevice {
public:
    struct Text {
        QString text;
        QPointF baseline;
        QFont font;
        QColor color;
    };

    explicit RecordingPaper(const QSize& size) : m_size(size) {}
    QPaintEngine* paintEngine() const override { return &m_engine; }
    const std::vector<Text>& texts() const { return m_engine.texts; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth: return m_size.width();
        case PdmHeight: return m_size.height();
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY: return 72;
        case PdmDevicePixelRatio: return 1;
        case PdmDevicePixelRatioScaled: return static_cast<int>(devicePixelRatioFScale());
        default: return QPaintDevice::metric(metric);
        }
    }

private:
    class Engine : public QPaintEngine {
    public:
        Engine() : QPaintEngine(AllFeatures) {}
        bool begin(QPaintDevice*) override { return true; }
        bool end() override { return true; }
        void updateState(const QPaintEngineState& changed) override
        {
            if (changed.state() & DirtyPen)
                m_color = changed.pen().color();
        }
        void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
        void drawTextItem(const QPointF& point, const QTextItem& item) override
        {
            texts.push_back({item.text(), point, item.font(), m_color});
        }
        Type type() const override { return User; }
        std::vector<Text> texts;

    private:
        QColor m_color = Qt::black;  // a painter begins with a black pen
    };

    QSize m_size;
    mutable Engine m_engine;
};
