#include "hostapp/window/ConflictNotice.h"

#include "hostapp/document/AnnotationEditing.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>

namespace plotix {

namespace {

class ConflictText {
    Q_DECLARE_TR_FUNCTIONS(ConflictText)
};

struct Worded {
    QString operator()(std::monostate) const
    {
        return ConflictText::tr("Somebody else deleted this meanwhile. OK makes it again as you have it here; Cancel "
                                "leaves it deleted.");
    }
    QString operator()(const SiteNote& note) const
    {
        const QString when = QLocale().toString(
            QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(note.modified * 1000)), QLocale::ShortFormat);
        const QString who = note.author.isEmpty() ? ConflictText::tr("somebody") : note.author;
        return ConflictText::tr("This note was changed meanwhile, by %1 at %2: “%3”. Yours is not stored. OK stores it "
                                "over the other one; Cancel leaves the other one.")
            .arg(who, when, shortText(note.text));
    }
    QString operator()(const std::vector<SiteLimit>& limits) const
    {
        QStringList each;
        for (const SiteLimit& limit : limits)
            each << QStringLiteral("%1 %2 %3").arg(limit.name, QLocale().toString(limit.value), limit.unit).trimmed();
        return ConflictText::tr("Somebody else changed these limits meanwhile, to: %1. Yours are not stored. OK stores "
                                "them over the others; Cancel leaves the others.")
            .arg(each.isEmpty() ? ConflictText::tr("none") : each.join(QStringLiteral(", ")));
    }
    QString operator()(const SiteProperty::Description& property) const
    {
        return ConflictText::tr("Somebody else changed this formula meanwhile, to “%1 = %2”. Yours is not stored. OK "
                                "stores it over the other one; Cancel leaves the other one.")
            .arg(property.name, property.formula ? property.formula->text : QString());
    }
};

}  // namespace

QString conflictText(const ChangedMeanwhile& changed)
{
    return std::visit(Worded(), changed.theirs());
}

void showConflict(QDialog& dialog, const ChangedMeanwhile& changed)
{
    const auto name = QStringLiteral("changedMeanwhile");
    auto* notice = dialog.findChild<QLabel*>(name);
    if (!notice) {
        notice = new QLabel(&dialog);
        notice->setObjectName(name);
        notice->setTextFormat(Qt::PlainText);
        notice->setWordWrap(true);
        if (auto* form = qobject_cast<QFormLayout*>(dialog.layout()))
            form->insertRow(0, notice);
        else if (auto* column = qobject_cast<QBoxLayout*>(dialog.layout()))
            column->insertWidget(0, notice);
    }
    notice->setText(conflictText(changed));
    dialog.setAccessibleDescription(notice->text());
}

}  // namespace plotix
