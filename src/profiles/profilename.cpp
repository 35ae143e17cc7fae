#include "profiles/profilename.h"

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "fatalassertion.h"
#include "profiles/profilenamelistwidget.h"
#include "profiles/profilesettings.h"
#include "ui_profilename.h"
#include "widgets/focusframe.h"

#include <QAccessible>
#include <QListWidget>
#include <QPainter>
#include <QStyleOption>

namespace
{
const QString calmCross = QStringLiteral("color: rgb(180,180,180); border:none;");
const QString alertCross = QStringLiteral("color: rgb(255,0,0); border:none;");
} // namespace

ProfileName::ProfileName(ProfileNameListWidget* item, QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::ProfileName>()), listItem(item)
{
    ui->setupUi(this);
    setTitle(QStringLiteral("Title"));
    setSubtitle(QStringLiteral("Subtitle"));
    ui->activeProfileButton->setStyleSheet(QStringLiteral("border:none;"));
    activeFalseInit();
    defaultFalseInit();
    ui->activeProfileButton->setCursor(Qt::PointingHandCursor);
    ui->defaultProfileButton->setCursor(Qt::PointingHandCursor);
    ui->deleteProfileButton->setCursor(Qt::PointingHandCursor);
    ui->deleteProfileButton->setStyleSheet(calmCross);
    ui->deleteProfileButton->setToolTip(QStringLiteral("Delete Profile"));
    setButtonsFocusPolicy(Qt::ClickFocus);

    connect(ui->activeProfileButton, &QPushButton::clicked, this,
            &ProfileName::requestActiveChange);
    connect(ui->defaultProfileButton, &QPushButton::clicked, this,
            &ProfileName::requestDefaultChange);
    connect(ui->deleteProfileButton, &QPushButton::clicked, this, &ProfileName::requestDeletion);
}

ProfileName::~ProfileName() = default;

void ProfileName::activeFalseInit()
{
    ui->activeProfileButton->setIcon(QIcon(QStringLiteral(":/new/images/nolight.PNG")));
    ui->activeProfileButton->setToolTip(QStringLiteral("Not Active"));
}

void ProfileName::defaultFalseInit()
{
    ui->defaultProfileButton->setStyleSheet(
        QStringLiteral("color: rgb(170,170,170); border:none;"));
    ui->defaultProfileButton->setToolTip(QStringLiteral("Not Default"));
}

void ProfileName::setTitle(const QString& title)
{
    ui->profileTitle->setText(title);
    // The buttons of all rows look alike; who hears them has to be told of which row each is.
    ui->activeProfileButton->setAccessibleName(QStringLiteral("Active: ") + title);
    ui->defaultProfileButton->setAccessibleName(QStringLiteral("Default: ") + title);
    ui->deleteProfileButton->setAccessibleName(QStringLiteral("Delete: ") + title);
}

void ProfileName::setSubtitle(const QString& subtitle)
{
    ui->profileSubtitle->setText(subtitle);
}

QString ProfileName::getTitle() const
{
    return ui->profileTitle->text();
}

QString ProfileName::getSubtitle() const
{
    return ui->profileSubtitle->text();
}

void ProfileName::setProfileSettings(ProfileSettings* settings)
{
    profileSettings = settings;
    activeSetting = settings->settings->getStructSettingByDescriptiveName(QStringLiteral("active"));
    defaultSetting =
        settings->settings->getStructSettingByDescriptiveName(QStringLiteral("default"));
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
    if (active) {
        ui->activeProfileButton->setIcon(QIcon(QStringLiteral(":/new/images/greenlight.PNG")));
        ui->activeProfileButton->setToolTip(QStringLiteral("Active"));
    } else {
        activeFalseInit();
    }
    activeSetting->setValue(active);
}

void ProfileName::setDefault(bool isDefault)
{
    KELVARON_ASSERT(defaultSetting != nullptr);
    if (isDefault) {
        ui->defaultProfileButton->setStyleSheet(QStringLiteral("color: black; border:none;"));
        ui->defaultProfileButton->setToolTip(QStringLiteral("Default"));
    } else {
        defaultFalseInit();
    }
    defaultSetting->setValue(isDefault);
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
    setStyleSheet(QStringLiteral("background-color:rgb(200,200,200);"));
    setTextsItalic(true);
    setButtonsFocusPolicy(Qt::StrongFocus);
    highlighted = true;
    if (hasListFocus()) {
        QAccessibleEvent selected(this, QAccessible::Focus);
        QAccessible::updateAccessibility(&selected);
    }
}

void ProfileName::dehighlight()
{
    setStyleSheet(QStringLiteral("background-color:rgb(255,255,255);"));
    setTextsItalic(false);
    setButtonsFocusPolicy(Qt::ClickFocus);
    highlighted = false;
}

bool ProfileName::hasListFocus() const
{
    return highlighted && listItem != nullptr && listItem->listWidget() != nullptr
           && listItem->listWidget()->hasFocus();
}

QString ProfileName::describe() const
{
    QStringList parts = {getTitle(), getSubtitle(), ui->activeProfileButton->toolTip()};
    if (getDefaultStatus()) {
        parts.append(ui->defaultProfileButton->toolTip());
    }
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
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

void ProfileName::enterEvent(QEvent* event)
{
    ui->deleteProfileButton->setStyleSheet(alertCross);
    QWidget::enterEvent(event);
}

void ProfileName::leaveEvent(QEvent* event)
{
    ui->deleteProfileButton->setStyleSheet(calmCross);
    QWidget::leaveEvent(event);
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
