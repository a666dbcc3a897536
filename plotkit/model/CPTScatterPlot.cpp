#include "plotkit/model/CPTScatterPlot.h"

#include <cmath>

CPTPlotDelegate::~CPTPlotDelegate() = default;

CPTScatterPlot::~CPTScatterPlot()
{
    QObject::disconnect(m_connection);
}

void CPTScatterPlot::setPlotSpace(const std::shared_ptr<const CPTXYPlotSpace>& space)
{
    m_plotSpace = space;
    changed();
}

void CPTScatterPlot::setDataLineStyle(const CPTLineStyle& style)
{
    m_dataLineStyle = style;
    changed();
}

void CPTScatterPlot::setInterpolation(CPTScatterPlotInterpolation interpolation)
{
    m_interpolation = interpolation;
    changed();
}

void CPTScatterPlot::setPointSize(double size)
{
    m_pointSize = size > 0 && std::isfinite(size) ? size : 0;
    changed();
}

double CPTScatterPlot::drawnPointSize() const
{
    const bool isOnlyPoints = m_interpolation == CPTScatterPlotInterpolation::PointsOnly;
    return m_pointSize > 0 || !isOnlyPoints ? m_pointSize : m_dataLineStyle.width;
}

void CPTScatterPlot::setAreaFill(const CPTAreaFill& fill)
{
    m_areaFill = fill;
    changed();
}

void CPTScatterPlot::setTitle(const QString& title)
{
    if (m_title == title)
        return;
    m_title = title;
    changed();
}

void CPTScatterPlot::setHidden(bool hidden)
{
    if (m_hidden == hidden)
        return;
    m_hidden = hidden;
    changed();
}

void CPTScatterPlot::setGapThreshold(double distance)
{
    m_gapThreshold = distance > 0 ? distance : std::numeric_limits<double>::infinity();
    changed();
}

void CPTScatterPlot::bind(CPTScatterPlotBinding binding, const CPTSeriesControllerPtr& controller,
                          const QString& keyPath)
{
    if (!controller || controller != m_controller.lock()) {
        QObject::disconnect(m_connection);
        m_xKeyPath.clear();
        m_yKeyPath.clear();
        m_controller = controller;
        if (controller)
            m_connection = QObject::connect(controller.get(), &CPTSeriesController::arrangedObjectsChanged,
                                            controller.get(), [this] { changed(); });
    }
    if (controller)
        (binding == CPTScatterPlotBinding::XValues ? m_xKeyPath : m_yKeyPath) = keyPath;
    changed();
}

QString CPTScatterPlot::boundKeyPath(CPTScatterPlotBinding binding) const
{
    return binding == CPTScatterPlotBinding::XValues ? m_xKeyPath : m_yKeyPath;
}

CPTPointSeriesPtr CPTScatterPlot::series() const
{
    const CPTSeriesControllerPtr controller = m_controller.lock();
    if (!controller || m_xKeyPath != u"arrangedObjects.x" || m_yKeyPath != u"arrangedObjects.y")
        return nullptr;
    return controller->arrangedObjects();
}

void CPTScatterPlot::changed() const
{
    if (m_changeHandler)
        m_changeHandler();
}
