#pragma once

#include <QtWidgets/QLayout>

#include <memory>
#include <vector>

/// Lays a date panel out in one row, and in more where it is narrow; every control keeps its label and its text.
///
/// What belongs together is a group and stays in one row: a picker behind its label. Groups follow each other from the
/// left; the last one stands at the right end of its row. A group may begin a new row as soon as one row is not enough.
/// Where two pickers stand below each other, they begin at the same place. Hidden widgets take no space. A row that is
/// still too wide narrows the last widget of its group down to its minimum. Lengths are pixels. The panel *owns* it,
/// and the widgets; main thread only.
class DatePanelLayout : public QLayout {
    Q_OBJECT
public:
    explicit DatePanelLayout(QWidget* panel);
    ~DatePanelLayout() override;

    enum class WhenWrapped { Follows, BeginsRow };
    void addGroup(const std::vector<QWidget*>& widgets, WhenWrapped place = WhenWrapped::Follows);

    /// How much taller the panel is at that width than in one row.
    int extraHeight(int width) const;

    void addItem(QLayoutItem* item) override;  ///< a group of its own
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;     ///< in one row
    QSize minimumSize() const override;  ///< as wide as the widest group, as tall as one row
    void setGeometry(const QRect& rect) override;

private:
    struct Group {
        std::vector<std::unique_ptr<QLayoutItem>> items;
        WhenWrapped place = WhenWrapped::Follows;
    };
    struct Row {
        std::vector<const Group*> groups;
        int width = 0;
        int height = 0;
    };

    std::vector<const Group*> shownGroups() const;
    std::vector<Row> rowsFor(int width) const;  ///< width: without the margins
    std::vector<Row> rowsFor(int width, WhenWrapped breaking) const;
    int heightOf(const std::vector<Row>& rows) const;
    int widthOf(const Group& group) const;
    int labelWidth(const std::vector<Row>& rows) const;
    void place(const Row& row, const QRect& rect, int label) const;
    void placeGroup(const Group& group, const QRect& rect, int label) const;

    std::vector<Group> m_groups;
};
