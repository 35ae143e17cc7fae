#include "support/gui/accessibletree.h"

#include <QAccessible>
#include <QFileDialog>
#include <QMessageBox>
#include <QMetaEnum>
#include <QWidget>

#include <functional>

namespace
{
QString roleName(const QAccessibleInterface& object)
{
    const auto roles = QMetaEnum::fromType<QAccessible::Role>();
    return QString::fromLatin1(roles.valueToKey(object.role()));
}

QString quoted(const QString& text)
{
    return '"' + QString(text).replace('\n', "\\n") + '"';
}

QString stateOf(const QAccessibleInterface& object)
{
    const QAccessible::State state = object.state();
    QStringList words;
    const auto add = [&words](bool isSet, const char* word) {
        if (isSet) {
            words.append(word);
        }
    };
    add(state.disabled, "disabled");
    add(state.focusable, "focusable");
    add(state.focused, "focused");
    add(state.selected, "selected");
    add(state.checked, "checked");
    add(state.readOnly, "read-only");
    add(state.defaultButton, "default");
    return words.join(", ");
}

/// Pop-up menus and lists exist before they are opened.
bool isShown(const QAccessibleInterface& object)
{
    const auto* widget = qobject_cast<const QWidget*>(object.object());
    return widget == nullptr || widget->isVisible();
}

/// The text of the label that belongs to a control.
QString labelOf(const QAccessibleInterface& object)
{
    const auto relations = object.relations(QAccessible::Label);
    return relations.isEmpty() ? QString() : relations.first().first->text(QAccessible::Name);
}

/// Qt names a combo box after its current item; its own name is that of its label.
QString nameOf(const QAccessibleInterface& object)
{
    if (object.role() != QAccessible::ComboBox) {
        return object.text(QAccessible::Name);
    }
    const QString label = labelOf(object);
    return label.isEmpty() ? qobject_cast<QWidget*>(object.object())->accessibleName() : label;
}

QString line(const QAccessibleInterface& object)
{
    QString text = roleName(object) + ' ' + quoted(nameOf(object));
    const QString description = object.text(QAccessible::Description);
    const QString value = object.text(QAccessible::Value);
    if (!description.isEmpty()) {
        text += " description " + quoted(description);
    }
    if (!value.isEmpty()) {
        text += " value " + quoted(value);
    }
    const QString state = stateOf(object);
    return state.isEmpty() ? text : text + " [" + state + ']';
}

void walk(QAccessibleInterface* object, int depth,
          const std::function<void(QAccessibleInterface&, int)>& visit)
{
    if (object == nullptr || !object->isValid() || object->state().invisible) {
        return;
    }
    visit(*object, depth);
    for (int i = 0; i < object->childCount(); ++i) {
        QAccessibleInterface* child = object->child(i);
        // Other windows are separate.
        if (child != nullptr && child->role() != QAccessible::Dialog && isShown(*child)) {
            walk(child, depth + 1, visit);
        }
    }
}

bool isControl(const QAccessibleInterface& object)
{
    switch (object.role()) {
    case QAccessible::PushButton:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::ProgressBar:
    case QAccessible::List:
    case QAccessible::Tree:
    case QAccessible::Table:
    case QAccessible::MenuItem:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
    case QAccessible::PageTab:
    case QAccessible::Link:
    case QAccessible::Graphic:
        return true;
    default:
        return object.state().focusable;
    }
}

template <typename Dialog>
bool standsIn(const QAccessibleInterface& object)
{
    const QAccessibleInterface* owner = &object; // the cells of a view are not objects
    while (owner != nullptr && owner->object() == nullptr) {
        owner = owner->parent();
    }
    const auto* widget = owner == nullptr ? nullptr : qobject_cast<QWidget*>(owner->object());
    return widget != nullptr && qobject_cast<const Dialog*>(widget->window()) != nullptr;
}

/// A control whose name does not fully explain it, or that has only a picture. In message boxes the
/// text asks and the buttons answer.
bool wantsDescription(const QAccessibleInterface& object)
{
    return object.object() != nullptr && object.state().focusable
           && object.role() != QAccessible::ListItem && !standsIn<QMessageBox>(object);
}
} // namespace

QString AccessibleTree::print(QWidget* window)
{
    QString text;
    walk(QAccessible::queryAccessibleInterface(window), 0,
         [&text](const QAccessibleInterface& object, int depth) {
             text += QString(2 * depth, ' ') + line(object) + '\n';
         });
    return text;
}

QStringList AccessibleTree::faults(QWidget* window)
{
    QStringList found;
    walk(QAccessible::queryAccessibleInterface(window), 0,
         [&found](const QAccessibleInterface& object, int /*depth*/) {
             if (standsIn<QFileDialog>(object)) {
                 return; // the toolkit's own
             }
             const QString place =
                 object.object() != nullptr
                     ? QString::fromLatin1(object.object()->metaObject()->className()) + ' '
                           + object.object()->objectName()
                     : QString();
             if (isControl(object) && nameOf(object).trimmed().isEmpty()) {
                 found.append("no name: " + line(object) + " (" + place + ')');
             }
             if (wantsDescription(object) && object.text(QAccessible::Description).isEmpty()) {
                 found.append("no description: " + line(object) + " (" + place + ')');
             }
         });
    return found;
}
