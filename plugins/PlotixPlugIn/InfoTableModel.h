#pragma once

#include "plotkit/model/CPTScatterPlot.h"
#include "plugins/PlotixPlugIn/InfoTableRow.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadableNumbers.h"
#include "plugins/PlotixPlugIn/reading/trend/TableFigures.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QPointer>

#include <functional>
#include <memory>
#include <vector>

/// The rows of the statistics table as the table view reads them: the arranged objects of the array controller.
///
/// *Borrows* the controller and forgets it when it is destroyed. Positions are displayed positions. When the number of
/// rows changes, rows are added or removed at the end and the others change in place, so that what a view keeps per
/// position stays. Sorting goes through the controller. The table view *owns* it. Main thread only.
class InfoTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Show, Color, Property, Unit, Minimum, Maximum, Average, Points };
    static constexpr int kColumnCount = 8;  ///< of its own; behind them stand those of the figures

    // Roles of cells of the figures.
    static constexpr int kShare = Qt::UserRole;           ///< double, 0 to 1; invalid: no share
    static constexpr int kGoesToTime = Qt::UserRole + 1;  ///< bool: a click goes there
    /// Of the colour's column: the plot whose line is shown there, a shared pointer; null: the colour itself.
    static constexpr int kPlotRole = Qt::UserRole + 2;

    explicit InfoTableModel(QObject* parent = nullptr);

    InfoTableArrayController* arrayController() const { return m_controller; }
    void setArrayController(InfoTableArrayController* controller);  ///< null: no rows

    /// While one lives the model does not follow its controller, and then once, for all: following each of thousands of
    /// changes takes seconds. Borrows the model; null: nothing.
    class Pause {
    public:
        explicit Pause(InfoTableModel* model) : m_model(model)
        {
            if (m_model)
                ++m_model->m_pauses;
        }
        ~Pause()
        {
            if (m_model && --m_model->m_pauses == 0 && m_model->m_isBehind)
                m_model->followController();
        }
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        InfoTableModel* m_model;
    };

    /// True while rows are added or removed to match the controller's.
    bool isFollowingController() const { return m_following; }

    /// What a column is called in a saved layout. Stored: never change.
    static QString identifierOfColumn(int column);
    static int columnWithIdentifier(const QString& identifier);  ///< -1 when there is none
    // The same, with the columns of the figures.
    QString identifierAt(int column) const;
    int columnNamed(const QString& identifier) const;

    /// What is shown beyond the rows, and of them over another span; null: nothing. *Weak*.
    void setFigures(plotix::TableFigures* figures);
    plotix::TableFigures* figures() const { return m_figures; }
    bool isBehindOwn(int column) const;
    int firstWidthOf(int column) const;  ///< of a column of the figures, points

    /// Numbers as people read them, in the user's locale; not so at first.
    void setReadableNumbers(bool readable);

    /// Answers the plot whose line stands for the row of a property, or null. None at first.
    using PlotOf = std::function<std::shared_ptr<const CPTScatterPlot>(const QString& propertyName)>;
    void setPlotOf(PlotOf plotOf) { m_plotOf = std::move(plotOf); }
    std::shared_ptr<const CPTScatterPlot> plotOf(const InfoTableRow& row) const;
    void plotsChanged();  ///< their looks

    /// Null outside the rows.
    InfoTableRowPtr rowAt(int row) const;
    void setShow(int row, bool show);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    /// Sorts the controller's arranged order; column -1 restores the order of its content.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

private:
    QString textAt(const InfoTableRow& row, int column) const;
    QVariant figureData(const InfoTableRow& row, int column, int role) const;
    bool isFigure(int column) const;
    void followColumns();
    void tellAllChanged();
    InfoTableArrayController::Order figureOrder(int column, Qt::SortOrder order) const;
    void followController();
    void forgetController();
    void setRowCount(int count);

    InfoTableArrayController* m_controller = nullptr;
    QMetaObject::Connection m_arrangedConnection;
    QMetaObject::Connection m_destroyedConnection;
    int m_rowCount = 0;
    bool m_following = false;
    int m_pauses = 0;
    bool m_isBehind = false;  ///< the controller has changed during a pause
    PlotOf m_plotOf;
    std::unique_ptr<plotix::ReadableNumbers> m_numbers;  // null: the numbers' plain text
    QPointer<plotix::TableFigures> m_figures;
    std::vector<plotix::TableFigures::Column> m_figureColumns;
};
