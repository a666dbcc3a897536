#pragma once

#include "hostapp/site/FigureRecipe.h"

/// A view of a trend as a line of text to send to somebody who has the site too, and where its site may be. Values and
/// free functions; any thread.
namespace plotix {

/// "plotix:nyc.plotix?trend=Week&agent=EWR&properties=temp,pressure&from=2013-07-01T00:00:00.000Z&to=…". Choices of
/// reading are not in it.
QString linkOf(const ShownView& view);

/// Nothing for a text that is no such link.
std::optional<ShownView> viewInLink(const QString& link);

/// The site of a view: its file's name in one of the folders, or one of the sites known by this name; nothing: it is in
/// none of them.
std::optional<QString> siteOfView(const ShownView& view, const QStringList& folders, const QStringList& sites = {});

}  // namespace plotix
