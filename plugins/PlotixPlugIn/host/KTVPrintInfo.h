#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QMarginsF>
#include <QtCore/QSizeF>
#include <QtCore/QtGlobal>

/// How content is divided into pages along one direction. The numbers are part of the contract: never change.
enum class KTVPaginationMode { Automatic = 0, Fit = 1, Clip = 2 };

/// The numbers are part of the contract: never change.
enum class KTVPaperOrientation { Portrait = 0, Landscape = 1 };

/// Print settings: paper, margins, scaling and pagination, as a page setup dialog edits them. A value.
///
/// The application has one shared object; printing changes it in place, and the changes last. Lengths are points. Main
/// thread only.
class KTVHOST_EXPORT KTVPrintInfo {
public:
    /// The application's shared settings, installed by the host; never null.
    static KTVPrintInfo* sharedPrintInfo();

    /// The size with the orientation applied: a landscape sheet is wider than high, in whatever order it was set.
    QSizeF paperSize() const;
    /// Chooses the paper; the orientation stays.
    void setPaperSize(const QSizeF& size) { m_paper = size; }

    KTVPaperOrientation orientation() const { return m_orientation; }
    void setOrientation(KTVPaperOrientation orientation) { m_orientation = orientation; }

    const QMarginsF& margins() const { return m_margins; }
    void setLeftMargin(double points) { m_margins.setLeft(points); }
    void setRightMargin(double points) { m_margins.setRight(points); }
    void setTopMargin(double points) { m_margins.setTop(points); }
    void setBottomMargin(double points) { m_margins.setBottom(points); }

    double scalingFactor() const { return m_scalingFactor; }
    void setScalingFactor(double factor) { m_scalingFactor = factor; }

    KTVPaginationMode horizontalPagination() const { return m_horizontalPagination; }
    void setHorizontalPagination(KTVPaginationMode mode) { m_horizontalPagination = mode; }
    KTVPaginationMode verticalPagination() const { return m_verticalPagination; }
    void setVerticalPagination(KTVPaginationMode mode) { m_verticalPagination = mode; }

    friend bool operator==(const KTVPrintInfo&, const KTVPrintInfo&) = default;

private:
    QSizeF m_paper{595, 842};             // A4
    QMarginsF m_margins{72, 90, 72, 90};  // left, top, right, bottom
    double m_scalingFactor = 1.0;
    KTVPaperOrientation m_orientation = KTVPaperOrientation::Portrait;
    KTVPaginationMode m_horizontalPagination = KTVPaginationMode::Clip;
    KTVPaginationMode m_verticalPagination = KTVPaginationMode::Automatic;
};

/// What is being printed at this moment: which page of how many. A value the host keeps up to date. Main thread only.
class KTVHOST_EXPORT KTVPrintOperation {
public:
    explicit KTVPrintOperation(qint64 pageCount) : m_pageCount(pageCount) {}

    /// Null while nothing is printed.
    static KTVPrintOperation* currentOperation();
    /// Returns the operation that was current before. The new one is *borrowed* until the next call.
    static KTVPrintOperation* setCurrentOperation(KTVPrintOperation* operation);

    qint64 currentPage() const { return m_currentPage; }  ///< the first page is 1
    void setCurrentPage(qint64 page) { m_currentPage = page; }
    qint64 pageCount() const { return m_pageCount; }  ///< length of the page range

private:
    qint64 m_currentPage = 1;
    qint64 m_pageCount = 0;
};
