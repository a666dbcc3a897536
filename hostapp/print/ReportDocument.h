#pragma once

#include <QtCore/QSizeF>
#include <QtGui/QImage>
#include <QtGui/QTextDocument>

#include <functional>
#include <optional>

class QTextTable;

/// A report's HTML laid out for paper.
///
/// Laid out in points: one pixel of the document is one point, whatever screen there is. The HTML is not changed; a
/// style sheet decides its looks. Only data inside the HTML is shown; no file and no address is ever read. *Owned* by
/// whoever makes it. Main thread only.
namespace plotix {

class ReportDocument : public QTextDocument {
    Q_OBJECT
public:
    /// Draws the report's graph again, for paper, to be shown at `size` points; a null image keeps the HTML's.
    using SharpGraph = std::function<QImage(const QSizeF& size)>;

    /// A picture in the HTML takes as many points as it has pixels. The one that fills the width of the page is the
    /// graph: `sharpGraph` is asked for it, once.
    explicit ReportDocument(SharpGraph sharpGraph);

    /// Lays the report out on pages of `pageSize` points: headings as large as possible with the graph still on the
    /// first page, and the table on a new page unless it fits below the graph. Its headings are repeated on every page.
    void layOut(const QString& html, const QSizeF& pageSize);

    /// Draws one page with its upper left corner at the painter's origin; the first is 0.
    void drawPage(QPainter* painter, int page);

protected:
    QVariant loadResource(int type, const QUrl& name) override;

private:
    void setHeadingSizes(int titleSize);  ///< points; for the first level, the others are not larger
    bool isGraphOnFirstPage() const;
    void arrangeTable();
    QTextTable* table() const;
    QImage graphFor(const QImage& carried);

    SharpGraph m_sharpGraph;
    std::optional<QImage> m_graph;  ///< from the first layout on
};

}  // namespace plotix
