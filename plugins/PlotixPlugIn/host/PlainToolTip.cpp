#include "plugins/PlotixPlugIn/host/PlainToolTip.h"

#include <QtGui/QTextDocument>

QString plainToolTip(const QString& text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    return Qt::convertFromPlainText(QString(text).replace(u'\r', u'\n'), Qt::WhiteSpacePre);
}
