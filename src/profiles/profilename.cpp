#include "profiles/profilename.h"

#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/fatalassertion.h"
#include "look/focusframe.h"
#include "profiles/profilenamelistwidget.h"
#include "profiles/profilesettings.h"
#include "ui_profilename.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QListWidget>
#include <QPainter>
#include <QStyleOption>
#include <QTextDocument>
#include <QToolTip>

namespace
{
const QString calmCross = QStringLiteral("color: rgb(180,180,180); border:none;");
const QString alertCross = QStringLiteral("color: rgb(255,0,0); border:none;");
} // namespace

ProfileName::ProfileName(ProfileNameListWidget* item, QWidget* parent, FormTime formTime)
    : QWidget(parent), listItem(item)
{
    if (formTime == FormTime::NOW) {
        makeForm();
    }
}

ProfileName::~ProfileName() = default;

void ProfileName::makeForm()
{
    if (ui != nullptr) {
        return;
    }
    ui = std::make_unique<Ui::ProfileName>();
    ui->setupUi(this);
    // The row is light in every theme. A palette would be lost whenever the row's style sheet
    // changes.
    ui->profileTitle->setStyleSheet(QStringLiteral("color: black;"));
    ui->profileSubtitle->setStyleSheet(QStringLiteral("color: rgb(70,70,70);"));
    ui->line->setStyleSheet(QStringLiteral("color: rgb(150,150,150);"));
    ui->activeProfileButton->setStyleSheet(QStringLiteral("border:none;"));
    ui->activeProfileButton->setCursor(Qt::PointingHandCursor);
    ui->defaultProfileButton->setCursor(Qt::PointingHandCursor);
    ui->deleteProfileButton->setCursor(Qt::PointingHandCursor);
    ui->deleteProfileButton->setStyleSheet(calmCross);
    ui->deleteProfileButton->setToolTip(QStringLiteral("Delete Profile"));
    showTexts();
    showActive();
    showDefault();
    showHighlight();
    fitTexts();

    connect(ui->activeProfileButton, &QPushButton::clicked, this,
            &ProfileName::requestActiveChange);
    connect(ui->defaultProfileButton, &QPushButton::clicked, this,
            &ProfileName::requestDefaultChange);
    connect(ui->deleteProfileButton, &QPushButton::clicked, this, &ProfileName::requestDeletion);
    const QList<QWidget*> parts = findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* part : parts) {
        part->show(); // the row itself may already be visible
    }
}

void ProfileName::setTitle(const QString& newTitle)
{
    title = newTitle;
    showTexts();
}

void ProfileName::setSubtitle(const QString& newSubtitle)
{
    subtitle = newSubtitle;
    showTexts();
}

void ProfileName::showTexts()
{
    if (ui == nullptr) {
        return;
    }
    ui->profileTitle->setText(title);
    ui->profileSubtitle->setText(subtitle);
    // The buttons of all rows have the same texts; a screen reader also has to name the row.
    ui->activeProfileButton->setAccessibleName(QStringLiteral("Active: ") + title);
    ui->defaultProfileButton->setAccessibleName(QStringLiteral("Default: ") + title);
    ui->deleteProfileButton->setAccessibleName(QStringLiteral("Delete: ") + title);
}

void ProfileName::showActive()
{
    if (ui == nullptr) {
        return;
    }
    if (!getActiveStatus()) {
        activeFalseInit();
        return;
    }
    ui->activeProfileButton->setIcon(QIcon(QStringLiteral(":/new/images/greenlight.PNG")));
    ui->activeProfileButton->setToolTip(activeText());
}

void ProfileName::activeFalseInit()
{
    ui->activeProfileButton->setIcon(QIcon(QStringLiteral(":/new/images/nolight.PNG")));
    ui->activeProfileButton->setToolTip(QStringLiteral("Not Active"));
}

void ProfileName::showDefault()
{
    if (ui == nullptr) {
        return;
    }
    if (!getDefaultStatus()) {
        defaultFalseInit();
        return;
    }
    ui->defaultProfileButton->setStyleSheet(QStringLiteral("color: black; border:none;"));
    ui->defaultProfileButton->setToolTip(QStringLiteral("Default"));
}

void ProfileName::defaultFalseInit()
{
    ui->defaultProfileButton->setStyleSheet(
        QStringLiteral("color: rgb(170,170,170); border:none;"));
    ui->defaultProfileButton->setToolTip(QStringLiteral("Not Default"));
}

QString ProfileName::activeText() const
{
    return getActiveStatus() ? QStringLiteral("Active") : QStringLiteral("Not Active");
}

void ProfileName::setProfileSettings(ProfileSettings* settings)
{
    profileSettings = settings;
    activeSetting = settings->settings->getStructSettingByDescriptiveName(
        HParser::ProfileConventions::activeFlag);
    defaultSetting = settings->settings->getStructSettingByDescriptiveName(
        HParser::ProfileConventions::defaultFlag);
    KELVARON_ASSERT(activeSetting != nullptr && defaultSetting != nullptr);
    setActive(false);
    setDefault(false);
}

void ProfileName::forgetProfile()
{
    profileSettings = nullptr;
    activeSetting = nullptr;
    defaultSetting = nullptr;
}

void ProfileName::setActive(bool active)
{
    KELVARON_ASSERT(activeSetting != nullptr);
    activeSetting->setValue(active);
    showActive();
}

void ProfileName::setDefault(bool isDefault)
{
    KELVARON_ASSERT(defaultSetting != nullptr);
    defaultSetting->setValue(isDefault);
    showDefault();
}

bool ProfileName::getActiveStatus() const
{
    return activeSetting != nullptr && activeSetting->isOn();
}

bool ProfileName::getDefaultStatus() const
{
    return defaultSetting != nullptr && defaultSetting->isOn();
}

void ProfileName::highlight()
{
    makeForm();
    highlighted = true;
    showHighlight();
    if (hasListFocus()) {
        QAccessibleEvent selected(this, QAccessible::Focus);
        QAccessible::updateAccessibility(&selected);
    }
}

void ProfileName::dehighlight()
{
    highlighted = false;
    showHighlight();
}

void ProfileName::showHighlight()
{
    if (ui == nullptr) {
        return;
    }
    setStyleSheet(highlighted ? QStringLiteral("background-color:rgb(200,200,200);")
                              : QStringLiteral("background-color:rgb(255,255,255);"));
    setTextsItalic(highlighted);
    setButtonsFocusPolicy(highlighted ? Qt::StrongFocus : Qt::ClickFocus);
}

bool ProfileName::hasListFocus() const
{
    return highlighted && listItem != nullptr && listItem->listWidget() != nullptr
           && listItem->listWidget()->hasFocus();
}

QString ProfileName::describe() const
{
    QStringList parts = {title, subtitle, activeText()};
    if (getDefaultStatus()) {
        parts.append(QStringLiteral("Default"));
    }
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

QString ProfileName::describeChemistry() const
{
    return profileSettings == nullptr
               ? QString()
               : QStringLiteral("Chemistry: %1").arg(profileSettings->chemistry);
}

void ProfileName::placeInTabOrder(QWidget* before, QWidget* after)
{
    QWidget* previous = before;
    for (QWidget* button :
         {ui->activeProfileButton, ui->defaultProfileButton, ui->deleteProfileButton}) {
        setTabOrder(previous, button);
        previous = button;
    }
    setTabOrder(previous, after);
}

void ProfileName::setButtonsFocusPolicy(Qt::FocusPolicy policy)
{
    for (QWidget* button :
         {ui->activeProfileButton, ui->defaultProfileButton, ui->deleteProfileButton}) {
        button->setFocusPolicy(policy);
    }
}

void ProfileName::setTextsItalic(bool italic)
{
    for (QLabel* label : {ui->profileTitle, ui->profileSubtitle}) {
        QFont font = label->font();
        font.setItalic(italic);
        label->setFont(font);
    }
}

void ProfileName::requestActiveChange()
{
    emit activeStatusChangeRequest(this, !getActiveStatus());
}

void ProfileName::requestDefaultChange()
{
    emit defaultStatusChangeRequest(this, !getDefaultStatus());
}

void ProfileName::requestDeletion()
{
    emit deleteMeSignal(this);
}

bool ProfileName::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        // Without a widget: a tooltip of this one would have the row's background.
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                           Qt::convertFromPlainText(describeChemistry()));
        return true;
    }
    return QWidget::event(event);
}

void ProfileName::enterEvent(QEvent* event)
{
    makeForm(); // a row that appears below a resting pointer is entered before it is painted
    showCross(true);
    QWidget::enterEvent(event);
}

void ProfileName::leaveEvent(QEvent* event)
{
    showCross(false);
    QWidget::leaveEvent(event);
}

void ProfileName::moveEvent(QMoveEvent* event)
{
    QWidget::moveEvent(event);
    // The window system sends no leave event when a row is scrolled away from a resting pointer.
    if (isCrossAlert && !rect().contains(mapFromGlobal(QCursor::pos()))) {
        showCross(false);
    }
}

void ProfileName::showCross(bool alert)
{
    if (ui != nullptr && alert != isCrossAlert) {
        isCrossAlert = alert;
        ui->deleteProfileButton->setStyleSheet(alert ? alertCross : calmCross);
    }
}

void ProfileName::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        fitTexts();
    }
}

void ProfileName::fitTexts()
{
    if (ui == nullptr) {
        return;
    }
    // All rows have the same height, whatever the system's font size.
    constexpr int room = 38; // pixels of the 46, without margins and the line between rows
    QFont titleFont = ui->profileTitle->font();
    QFont subtitleFont = ui->profileSubtitle->font();
    double size = QFontInfo(font()).pointSizeF();
    do {
        titleFont.setPointSizeF(size);
        subtitleFont.setPointSizeF(size);
        size -= 1;
    } while (size > 1
             && QFontMetrics(titleFont).height() + QFontMetrics(subtitleFont).height() > room);
    ui->profileTitle->setFont(titleFont);
    ui->profileSubtitle->setFont(subtitleFont);
    for (QWidget* button : {ui->defaultProfileButton, ui->deleteProfileButton}) {
        QFont letter = button->font();
        letter.setPointSizeF(subtitleFont.pointSizeF());
        button->setFont(letter);
    }
}

void ProfileName::paintEvent(QPaintEvent*)
{
    // A plain QWidget subclass draws no style-sheet background of its own.
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    if (hasListFocus()) {
        FocusFrame::draw(painter, rect());
    }
}
