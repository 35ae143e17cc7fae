#pragma once

#include <QStandardItemModel>

class QComboBox;

/// The items of a drop-down list of serial ports: their names, and tooltips that say what the system knows
/// of them at the moment at which they are shown. The closed box shows the tooltip of its port, and screen
/// readers find it in the description of the box that has the focus.
class PortListModel : public QStandardItemModel
{
    Q_OBJECT

public:
    /// `comboBox` is to use this model, and owns it.
    explicit PortListModel(QComboBox* comboBox);

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void describe();

    QComboBox* box;
    QString purpose; ///< what the box is for, its accessible description without the port
};
