#pragma once

#include <QtWidgets/QWidget>

#include <vector>

class QLabel;
class QLineEdit;
class QListWidget;

/// A list of properties to tick, with a field that searches it, and how many are ticked. Names are shown as they are.
/// Its parent *owns* it. Main thread only.
namespace plotix {

class PropertyChoice : public QWidget {
    Q_OBJECT
public:
    struct Property {
        QString name;
        bool isTicked = true;
    };

    explicit PropertyChoice(QWidget* parent = nullptr);

    void offer(const std::vector<Property>& properties);
    std::vector<std::size_t> ticked() const;  ///< positions, ascending

    /// Whether a text is being searched for: Return then belongs to the search, and leads to the list.
    bool isSearching() const;
    void leaveSearch();

signals:
    void tickedChanged();

private:
    void search(const QString& text);
    void tickFound(bool tick);  ///< those that the search leaves
    void tell();

    // All owned by the widget.
    QLineEdit* m_search;
    QListWidget* m_list;
    QLabel* m_count;
};

}  // namespace plotix
