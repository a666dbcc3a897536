#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QRectF>

class QObject;

/// Page header and footer of a printed web view. The view that prints *borrows* its delegate. Main thread only.
///
/// Heights and rectangles are points; rectangles lie in page coordinates, whose y grows upward from the sheet's lower
/// edge. Drawing goes to the current KTVGraphicsContext, page numbers come from the current KTVPrintOperation.
/// `webView` identifies the view that prints; it may be null.
class KTVHOST_EXPORT KTVWebUIDelegate {
public:
    virtual ~KTVWebUIDelegate();

    virtual float webViewHeaderHeight(QObject* webView) = 0;
    virtual float webViewFooterHeight(QObject* webView) = 0;
    virtual void webViewDrawHeaderInRect(QObject* webView, const QRectF& rect) = 0;
    virtual void webViewDrawFooterInRect(QObject* webView, const QRectF& rect) = 0;
};
