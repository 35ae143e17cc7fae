#include "serialports/portlistmodel.h"

#include "serialports/porttip.h"
#include "serialports/qextserialenumerator.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>

namespace
{
QString tipFor(const QString& portName)
{
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    for (const QextPortInfo& port : ports) {
        if (port.portName == portName) {
            return PortTip::text(port);
        }
    }
    return {}; // the port has just disappeared
}
QString asRichText(const QString& text)
{
    return text.isEmpty() ? text : Qt::convertFromPlainText(text);
}
} // namespace

PortListModel::PortListModel(QComboBox* comboBox)
    : QStandardItemModel(comboBox), box(comboBox), purpose(comboBox->accessibleDescription())
{
    box->installEventFilter(this);
    connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this, &PortListModel::describe);
}

QVariant PortListModel::data(const QModelIndex& index, int role) const
{
    return role == Qt::ToolTipRole ? asRichText(tipFor(index.data().toString()))
                                   : QStandardItemModel::data(index, role);
}

bool PortListModel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ToolTip && watched == box) {
        const QString tip = box->currentData(Qt::ToolTipRole).toString();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip, box);
        return true;
    }
    if (event->type() == QEvent::FocusIn
        && static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
        describe();
    }
    return QStandardItemModel::eventFilter(watched, event);
}

void PortListModel::describe()
{
    if (box->hasFocus()) {
        const QString tip =
            tipFor(box->currentText()).replace(QLatin1Char('\n'), QStringLiteral(". "));
        box->setAccessibleDescription(tip.isEmpty() ? purpose
                                                    : purpose + QStringLiteral(". ") + tip);
    }
}
