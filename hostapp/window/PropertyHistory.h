#pragma once

#include "hostapp/document/SiteDocument.h"

#include <QtCore/QObject>

#include <map>

class QUndoStack;

namespace plotix {

/// Makes changes of a property's unit and colour undoable. *Shares* the document, *borrows* the stack, whose commands
/// share the properties. Main thread only.
class PropertyHistory : public QObject {
    Q_OBJECT
public:
    PropertyHistory(std::shared_ptr<SiteDocument> document, QUndoStack& stack);

private:
    struct Look {
        QString unit;
        QColor colour;
        friend bool operator==(const Look&, const Look&) = default;
    };
    class Command;

    void watchAll();
    void watch(const std::shared_ptr<SiteProperty>& property);
    void compare(const std::shared_ptr<SiteProperty>& property);

    std::shared_ptr<SiteDocument> m_document;
    QUndoStack& m_stack;
    std::map<const SiteProperty*, Look> m_seen;
    bool m_undoing = false;
};

}  // namespace plotix
