#pragma once

#include <QStandardItemModel>

class QComboBox;

/// The items of a drop-down list of serial ports: their names, and tooltips that show what the
/// system knows about them when the tooltip opens. The closed box has the tooltip of its port; for
/// screen readers the same text is in the box's description while the box has the focus.
class PortListModel : public QStandardItemModel
{
    Q_OBJECT

public:
    /// Sets this model on `comboBox`, which owns it.
    explicit PortListModel(QComboBox* comboBox);

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void describe();

    QComboBox* box;
    QString purpose; ///< the purpose of the box: its accessible description without the port
};
