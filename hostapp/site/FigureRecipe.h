#pragma once

#include "base/Date.h"
#include "hostapp/core/OutputFile.h"

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <optional>

/// What a figure shows, and how that is written into its file, so that opening the file shows it again. Values and free
/// functions; any thread. `docs/formats.md` has the form.
namespace plotix {

/// A view of a trend, told so that a person, or this program elsewhere, finds it again. No folder of anybody's machine
/// is in it.
struct ShownView {
    QString siteName;        ///< for people
    QString siteFile;        ///< the name of the site's file, without folders
    QString trend;           ///< its title
    QString agent;           ///< its name
    QStringList properties;  ///< their keys
    OptionalDate from, to;   ///< of the records shown
    QVariantMap reading{};   ///< options of reading that were chosen, by name

    friend bool operator==(const ShownView&, const ShownView&) = default;
};

/// Moments as recipes and links have them, to the millisecond; nothing for another text.
QString textOfMoment(const Date& moment);
OptionalDate momentOfText(const QString& text);

/// The recipe as JSON; and read, nothing where it is none or of a later form.
QByteArray recipeOf(const ShownView& view);
std::optional<ShownView> viewInRecipe(const QByteArray& recipe);

/// The PNG, PDF or SVG file with a recipe in it; the picture is the same. What is no such file comes back unchanged.
QByteArray withRecipe(FileKind kind, const QByteArray& file, const QByteArray& recipe);

/// What the file of a figure shows; nothing where it carries no recipe that can be read.
std::optional<ShownView> viewInFigure(const QByteArray& file);

}  // namespace plotix
