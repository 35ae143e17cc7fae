#include "settingsui/settingslineedit.h"

#include "CBGenerator/structsetting.h"
#include "base/quotedtext.h"
#include "settingsui/fieldnote.h"
#include "settingsui/numberhints.h"
#include "settingsui/numbervalidator.h"
#include "settingsui/storabletextvalidator.h"

#include <QHelpEvent>
#include <QStyleOptionFrame>
#include <QTimer>
#include <QToolTip>

#include <utility>

SettingsLineEdit::SettingsLineEdit(QWidget* parent)
    : QLineEdit(parent), isRead(QAccessible::isActive())
{
    QAccessible::installActivationObserver(this);
    setObjectName(QStringLiteral("SettingsLineEdit"));
    connect(this, &QLineEdit::textEdited, this, [this] {
        isTyped = true;
        removeNote();
    });
    connect(this, &QLineEdit::editingFinished, this, &SettingsLineEdit::on_editingFinished);
}

SettingsLineEdit::~SettingsLineEdit()
{
    QAccessible::removeActivationObserver(this);
}

void SettingsLineEdit::unbindSetting()
{
    if (setting != nullptr) {
        setting->disconnect(this);
    }
    setting = nullptr;
    isTyped = false;
    isUnfinished = false;
    removeNote();
}

void SettingsLineEdit::bindSetting(HParser::StructSetting* boundSetting)
{
    unbindSetting();
    setting = boundSetting;
    if (validator() == nullptr) {
        addValidator();
    }
    if (setting->settingType != HParser::StructSetting::NUM) {
        constexpr int unlimited = 32767; // Qt's default
        // The charger's field is terminated by a zero byte.
        setMaxLength(setting->arraySize > 0 ? setting->arraySize - 1 : unlimited);
    }
    updateView();
    connect(setting, &HParser::StructSetting::numValueChanged, this, &SettingsLineEdit::updateView);
    connect(setting, &HParser::StructSetting::enableView, this, &SettingsLineEdit::on_enableView);
}

void SettingsLineEdit::addValidator()
{
    if (setting->settingType == HParser::StructSetting::NUM) {
        const auto* numberValidator = new NumberValidator(this);
        setValidator(numberValidator);
        connect(numberValidator, &NumberValidator::refused, this,
                &SettingsLineEdit::showNumberHint);
        connect(numberValidator, &NumberValidator::completed, this,
                [this] { isUnfinished = true; });
        return;
    }
    textValidator = new StorableTextValidator(this);
    setValidator(textValidator);
    connect(textValidator, &StorableTextValidator::refused, this, &SettingsLineEdit::showTextHint);
}

QSize SettingsLineEdit::sizeHint() const
{
    return {minimumWidth(), QLineEdit::sizeHint().height()};
}

void SettingsLineEdit::saveSetting()
{
    if (setting == nullptr) {
        return;
    }
    switch (setting->settingType) {
    case HParser::StructSetting::NUM:
        saveNumber();
        break;
    case HParser::StructSetting::STRING:
    case HParser::StructSetting::LIST:
        setting->setValue(text());
        updateView();
        break;
    case HParser::StructSetting::BOOL:
    case HParser::StructSetting::UNKNOWN:
        break;
    }
}

void SettingsLineEdit::saveNumber()
{
    const double typed = text().toDouble();
    setting->setValue(typed);
    updateView();
    if (std::exchange(isTyped, false)) {
        const bool wasNumber = !std::exchange(isUnfinished, false);
        correction = NumberHints::correction(*setting, wasNumber ? std::optional<double>(typed)
                                                                 : std::nullopt);
        // Queued: the window may be closing; otherwise the focus has reached its new widget by
        // then.
        QTimer::singleShot(0, this, &SettingsLineEdit::noteCorrection);
    }
}

void SettingsLineEdit::noteCorrection()
{
    if (!correction.isEmpty() && isVisible()) {
        const QString text = correction;
        removeNote();
        delete window()->findChild<FieldNote*>(QString(), Qt::FindDirectChildrenOnly);
        note = new FieldNote(text, this);
    }
}

void SettingsLineEdit::removeNote()
{
    correction.clear();
    delete note;
}

void SettingsLineEdit::on_editingFinished()
{
    saveSetting();
}

void SettingsLineEdit::updateView()
{
    if (setting == nullptr) {
        return;
    }
    if (textValidator != nullptr) {
        textValidator->tolerate(setting->getValue());
    }
    setText(setting->getValue());
    if (!hasFocus()) {
        setCursorPosition(0); // shows a long text from its beginning
    }
    describeForReader();
}

void SettingsLineEdit::accessibilityActiveChanged(bool active)
{
    isRead = active;
    if (setting != nullptr) {
        describeForReader();
    }
}

void SettingsLineEdit::describeForReader()
{
    const QString description = isRead ? describe().join(QStringLiteral("; ")) : describeInBrief();
    if (accessibleDescription()
        != description) { // a screen reader would be notified of an unchanged name
        setAccessibleDescription(description);
    }
}

QString SettingsLineEdit::describeInBrief() const
{
    QStringList parts = {setting->units, setting->categoryLabel};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

QStringList SettingsLineEdit::describe() const
{
    QStringList parts;
    if (setting->settingType == HParser::StructSetting::NUM) {
        parts = NumberHints::limits(*setting);
    } else if (setting->arraySize > 1) {
        parts.append(maxLength() == 1 ? QStringLiteral("1 character")
                                      : QStringLiteral("up to %1 characters").arg(maxLength()));
    }
    if (!setting->categoryLabel.isEmpty()) {
        parts.append(setting->categoryLabel);
    }
    return parts;
}

bool SettingsLineEdit::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || setting == nullptr) {
        return QLineEdit::event(event);
    }
    showTip(static_cast<QHelpEvent*>(event)->globalPos());
    return true;
}

void SettingsLineEdit::showTip(const QPoint& place)
{
    QStringList lines = describe();
    if (isTextCut()) {
        lines.prepend(text());
    }
    for (QString& line : lines) {
        line = line.toHtmlEscaped();
    }
    // The window is the parent: the grid's style sheet would change the tooltip's appearance.
    QToolTip::showText(
        place, QStringLiteral("<p style='white-space:pre'>") + lines.join(QStringLiteral("<br>")),
        window());
}

bool SettingsLineEdit::isTextCut() const
{
    QStyleOptionFrame option;
    initStyleOption(&option);
    constexpr int margins = 4; // the line edit's own margin beside the text
    const int room =
        style()->subElementRect(QStyle::SE_LineEditContents, &option, this).width() - margins;
    return fontMetrics().horizontalAdvance(text()) > room;
}

void SettingsLineEdit::showTextHint(const QString& characters)
{
    showHint(
        QStringLiteral(
            "The Kelvaron can only store plain English letters, digits and punctuation (ASCII), "
            "not %1.")
            .arg(quotedText(characters)));
}

void SettingsLineEdit::showNumberHint()
{
    showHint(QStringLiteral("Use only digits and a decimal point, such as 1500.5"));
}

void SettingsLineEdit::showHint(const QString& hint)
{
    if (hasFocus()) { // no hint for a value that the user did not enter
        QToolTip::showText(mapToGlobal(rect().bottomLeft()), hint, window());
    }
}

void SettingsLineEdit::on_enableView(bool on)
{
    setEnabled(on);
}
