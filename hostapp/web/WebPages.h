#pragma once

#include "hostapp/web/OpenSites.h"

/// The pages as HTML in UTF-8, without script: the files of pages/, built into the program, filled in. Any thread.
namespace plotix {

/// The open sites, each a link to its page.
QByteArray indexPage(const std::vector<OpenSites::Listed>& sites);

/// A preview of each view, over the range where there is one, then `advertisement` unchanged: last, so that a tag left
/// open in it hides nothing.
QByteArray sitePage(const QString& name, const std::vector<WebView>& views, const QString& advertisement,
                    const std::optional<WebRange>& range = {});

/// A heading and a sentence.
QByteArray messagePage(const QString& title, const QString& text);

QByteArray styleSheet();
QByteArray iconImage();  ///< SVG

}  // namespace plotix
