#pragma once

#include <QtCore/QSizeF>
#include <QtGui/QImage>
#include <QtGui/QTextDocument>

#include <functional>
#include <optional>

class QTextTable;

/// A report's HTML laid out for paper.
///
/// Laid out in points: one pixel of the document is one point, whatever screen there is. The HTML stays as it came; how
/// it looks is a style sheet. Only data the HTML itself carries is shown, no file and no address is ever read. A value
/// in all but copying. Main thread only.
namespace plotix {

class ReportDocument : public QTextDocument {
    Q_OBJECT
public:
    /// Draws the report's graph anew for paper, to be shown at `size` points; a null image keeps the one in the HTML.
    using SharpGraph = std::function<QImage(const QSizeF& size)>;

    /// A picture in the HTML takes as many points as it has pixels. The one that fills the width of the page is the
    /// graph: `sharpGraph` is asked for it, once.
    explicit ReportDocument(SharpGraph sharpGraph);

    /// Lays the report out on pages of `pageSize` points: headings as large as lets the graph stay on the first page,
    /// and a table that starts on a page of its own unless it fits below the graph. Its headings stand on every page.
    void layOut(const QString& html, const QSizeF& pageSize);

    /// Draws one page with its upper left corner at the painter's origin; the first is 0.
    void drawPage(QPainter* painter, int page);

protected:
    QVariant loadResource(int type, const QUrl& name) override;

private:
    void setHeadingSizes(int titleSize);  ///< points; of the first level, the others are no larger
    bool isGraphOnFirstPage() const;
    void arrangeTable();
    QTextTable* table() const;
    QImage graphFor(const QImage& carried);

    SharpGraph m_sharpGraph;
    std::optional<QImage> m_graph;  ///< from the first time it is laid out
};

}  // namespace plotix
