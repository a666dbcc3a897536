#include "plugins/PlotixPlugIn/host/PlainMessageViewController.h"

#include <QtCore/QEvent>
#include <QtWidgets/QLabel>

/// Follows the size of whatever view holds it.
class PlainMessageViewController::Label : public QLabel {
public:
    Label()
    {
        setAlignment(Qt::AlignCenter);
        setMargin(12);
        setAutoFillBackground(true);
        setAttribute(Qt::WA_TransparentForMouseEvents);  // the covered view keeps its clicks and wheel
    }

    void placeOn(QWidget* view)
    {
        if (view != parentWidget()) {
            if (parentWidget())
                parentWidget()->removeEventFilter(this);
            setParent(view);
            view->installEventFilter(this);
        }
        centre();
        show();
        raise();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched != parentWidget())
            watched->removeEventFilter(this);  // taken out of that view meanwhile
        else if (event->type() == QEvent::Resize)
            centre();
        return false;
    }

private:
    void centre()
    {
        adjustSize();
        const QSize room = parentWidget()->size();
        move((room.width() - width()) / 2, (room.height() - height()) / 2);
    }
};

PlainMessageViewController::PlainMessageViewController() : m_label(new Label) {}

PlainMessageViewController::~PlainMessageViewController()
{
    delete m_label;
}

void PlainMessageViewController::centerOnView(QWidget* view, const QString& message)
{
    if (!view)
        return;
    if (!m_label)
        m_label = new Label;
    auto* label = static_cast<Label*>(m_label.data());
    label->setText(message);
    label->placeOn(view);
}
