#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/textfile.h"
#include "comparisontable.h"
#include "mainwindow.h"
#include "profiles/profilename.h"
#include "profiles/profilenamelistwidget.h"
#include "profiles/profilerows.h"
#include "profiles/profilesettings.h"
#include "rows.h"
#include "xmlformat/writetoxml.h"
#include "xmlformat/xmlmanager.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

#include <memory>

using HParser::StructSetting;
using XMLGeneratorParser::WriteToXML;

namespace
{
/// Runs the event loop until a window has been painted and no paint event is pending.
class Paint : public QObject
{
public:
    explicit Paint(QWidget& paintedWindow) : window(paintedWindow)
    {
        window.installEventFilter(this);
    }

    void wait()
    {
        int quietRounds = 0;
        while (!isPainted || quietRounds < 2) {
            isBusy = false;
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            quietRounds = isBusy ? 0 : quietRounds + 1;
        }
        isPainted = false;
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::UpdateRequest) {
            isPainted = true;
            isBusy = true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget& window;
    bool isPainted = false;
    bool isBusy = false;
};

/// The objects that the benchmarks use, shared by all rows: the editor's window and a bare one.
struct Stage
{
    explicit Stage(MainWindow& editorWindow)
        : window(editorWindow), paint(editorWindow),
          list(*window.findChild<QListWidget*>(QStringLiteral("profileNamesList"))),
          files(*window.findChild<XMLGeneratorParser::XMLManager*>()),
          generator(*window.findChild<HParser::Generator*>()), bareWindow(new QWidget),
          barePaint(*bareWindow)
    {
        bareWindow->resize(window.size());
        auto* layout = new QHBoxLayout(bareWindow.get());
        bareList = new QListWidget;
        bareList->setUniformItemSizes(true);
        bareList->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        bareScroll = new QScrollArea;
        bareList->setFixedWidth(list.width());
        layout->addWidget(bareList);
        layout->addWidget(bareScroll);
        bareWindow->show();
        barePaint.wait();
    }

    QString profileFile(int count, bool mixed);
    void load(const QString& file);
    void clear();

    MainWindow& window;
    Paint paint;
    QListWidget& list;
    XMLGeneratorParser::XMLManager& files;
    HParser::Generator& generator;
    std::unique_ptr<QWidget> bareWindow;
    Paint barePaint;
    QListWidget* bareList = nullptr;
    QScrollArea* bareScroll = nullptr;
    QTemporaryDir folder;
};

/// Returns a file of profiles with different titles and numbers, of one chemistry or of all in
/// turn.
QString Stage::profileFile(int count, bool mixed)
{
    const QString file =
        folder.filePath(QStringLiteral("%1%2.xml").arg(count).arg(mixed ? "mixed" : ""));
    if (QFileInfo::exists(file)) {
        return file;
    }
    QString text = QStringLiteral("<KelvaronProfiles>\n");
    QTextStream stream(&text);
    stream << "<GlobalSettings>\n";
    WriteToXML::xmlOutputSettings(&stream, generator.getGlobalSettings()->getStructSettings());
    stream << "</GlobalSettings>\n";
    const QList<HParser::StructSettings*> chemistries = generator.getChemistrySettings();
    for (int i = 0; i < count; ++i) {
        const auto* chemistry = chemistries.at(mixed ? i % chemistries.size() : 0);
        ProfileSettings profile;
        profile.setChemistry(chemistry->getDescriptiveName(), &generator);
        const QList<StructSetting*> settings = profile.settings->getStructSettings();
        settings.at(0)->setValue(QStringLiteral("Profile %1").arg(i));
        for (StructSetting* setting : settings) {
            if (setting->settingType == StructSetting::NUM && setting->isBasic) {
                setting->setValue(setting->number() + i % 7);
            }
        }
        stream << "<profile id=\"" << i << "\" active=\"true\" default=\"false\" "
               << "modifiable=\"true\">\n<chemistry>" << profile.chemistry << "</chemistry>\n";
        WriteToXML::xmlOutputSettings(&stream, settings);
        stream << "</profile>\n";
    }
    stream << "</KelvaronProfiles>\n";
    stream.flush();
    TextFile::write(file, text);
    return file;
}

void Stage::load(const QString& file)
{
    files.importFromXML(file);
    paint.wait();
}

void Stage::clear()
{
    emit files.deleteAllProfiles();
    paint.wait();
}

QWidget* newBareRow(const QString& title, const QString& subtitle)
{
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    auto* texts = new QVBoxLayout;
    auto* titleLabel = new QLabel(title);
    QFont bold = titleLabel->font();
    bold.setBold(true);
    titleLabel->setFont(bold);
    texts->addWidget(titleLabel);
    texts->addWidget(new QLabel(subtitle));
    layout->addLayout(texts);
    auto* line = new QFrame;
    line->setFrameShape(QFrame::VLine);
    layout->addWidget(line);
    for (const char* text : {"", "D", "x"}) {
        auto* button = new QPushButton(QString::fromLatin1(text));
        button->setFixedSize(24, 24);
        layout->addWidget(button);
    }
    return row;
}

/// All items first: attaching a row triggers a layout of the list.
void addBareRows(Stage& stage, const QList<ProfileName*>& rows)
{
    QListWidget& list = *stage.bareList;
    for (int i = 0; i < rows.size(); ++i) {
        auto* item = new QListWidgetItem;
        item->setSizeHint(QSize(0, 46));
        list.addItem(item);
    }
    for (int i = 0; i < rows.size(); ++i) {
        list.setItemWidget(list.item(i),
                           newBareRow(rows.at(i)->getTitle(), rows.at(i)->getSubtitle()));
    }
    list.scrollToBottom();
    stage.barePaint.wait();
}

/// The labels and editors of a profile, as plain Qt widgets.
QWidget* newBareGrid(const HParser::StructSettings& settings)
{
    const QFont font(QStringLiteral("Lucida Grande"), 11);
    auto* container = new QWidget;
    auto* grid = new QGridLayout(container);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    int row = 0;
    const auto add = [&](QWidget* widget, int column) {
        widget->setFont(font);
        widget->setEnabled(false);
        grid->addWidget(widget, row, column);
    };
    const QList<StructSetting*> shown = settings.getStructSettings();
    for (const StructSetting* setting : shown) {
        add(new QLabel(setting->descriptiveName), 1);
        if (setting->settingType == StructSetting::BOOL) {
            auto* box = new QCheckBox;
            box->setChecked(setting->isOn());
            add(box, 3);
        } else if (setting->settingType != StructSetting::LIST) {
            add(new QLineEdit(setting->getValue()), 3);
        }
        if (setting->settingType == StructSetting::NUM) {
            add(new QLabel(setting->units), 5);
        }
        ++row;
    }
    return container;
}

/// Selects the rows in turn, as clicks do.
ComparisonTable::Function selecting(const std::shared_ptr<Stage>& stage, bool mixed)
{
    return [stage, mixed](benchmark::State& state) {
        stage->load(stage->profileFile(2, mixed));
        const QList<ProfileName*> rows = ProfileRows::widgets(stage->list);
        stage->list.scrollToTop();
        int next = 0;
        for (auto iteration : state) {
            static_cast<void>(iteration);
            QTest::mouseClick(rows.at(next), Qt::LeftButton, Qt::NoModifier, QPoint(4, 23));
            stage->paint.wait();
            next = 1 - next;
        }
        stage->clear();
    };
}

ComparisonTable::Function makingBareGrids(const std::shared_ptr<Stage>& stage, bool mixed)
{
    return [stage, mixed](benchmark::State& state) {
        stage->load(stage->profileFile(2, mixed));
        const QList<ProfileName*> rows = ProfileRows::widgets(stage->list);
        int next = 0;
        for (auto iteration : state) {
            static_cast<void>(iteration);
            stage->bareScroll->setWidget(
                newBareGrid(*rows.at(next)->getProfileSettings()->settings));
            stage->barePaint.wait();
            next = 1 - next;
        }
        delete stage->bareScroll->takeWidget();
        stage->clear();
    };
}

void addSelecting(ComparisonTable& table, const std::shared_ptr<Stage>& stage)
{
    ComparisonTable::Row row;
    row.floorName = "making the same labels and editors bare";
    row.aim = 0.5;
    for (const bool mixed : {false, true}) {
        row.name = mixed ? "selecting a profile of another chemistry, until painted"
                         : "selecting another profile, until painted";
        row.ours = selecting(stage, mixed);
        row.floor = makingBareGrids(stage, mixed);
        table.add(row);
    }
}

void addLoading(ComparisonTable& table, const std::shared_ptr<Stage>& stage, int count)
{
    ComparisonTable::Row row;
    row.name = "loading " + std::to_string(count) + " profiles from XML, until painted";
    row.floorName = "making as many bare rows";
    row.aim = 1.1;
    row.iterations = count < 100 ? 10 : 1;
    row.ours = [stage, count](benchmark::State& state) {
        const QString file = stage->profileFile(count, true);
        for (auto iteration : state) {
            static_cast<void>(iteration);
            stage->load(file);
            state.PauseTiming();
            stage->clear();
            state.ResumeTiming();
        }
    };
    row.floor = [stage, count](benchmark::State& state) {
        const QString file = stage->profileFile(count, true);
        stage->load(file);
        const QList<ProfileName*> rows = ProfileRows::widgets(stage->list);
        for (auto iteration : state) {
            static_cast<void>(iteration);
            addBareRows(*stage, rows);
            state.PauseTiming();
            stage->bareList->clear();
            stage->barePaint.wait();
            state.ResumeTiming();
        }
        stage->clear();
    };
    table.add(row);
}

void addDeleting(ComparisonTable& table, const std::shared_ptr<Stage>& stage)
{
    constexpr int count = 1000;
    ComparisonTable::Row row;
    row.name = "deleting all of 1000 profiles, until painted";
    row.floorName = "removing as many bare rows";
    row.aim = 1.2;
    row.iterations = 1;
    row.ours = [stage](benchmark::State& state) {
        const QString file = stage->profileFile(count, true);
        for (auto iteration : state) {
            static_cast<void>(iteration);
            state.PauseTiming();
            stage->load(file);
            state.ResumeTiming();
            stage->clear();
        }
    };
    row.floor = [stage](benchmark::State& state) {
        stage->load(stage->profileFile(count, true));
        const QList<ProfileName*> rows = ProfileRows::widgets(stage->list);
        for (auto iteration : state) {
            static_cast<void>(iteration);
            state.PauseTiming();
            addBareRows(*stage, rows);
            state.ResumeTiming();
            stage->bareList->clear();
            stage->barePaint.wait();
        }
        stage->clear();
    };
    table.add(row);
}
} // namespace

void BenchmarkRows::addWindow(ComparisonTable& table, MainWindow& window)
{
    auto stage = std::make_shared<Stage>(window);
    addSelecting(table, stage);
    for (const int count : {20, 200, 1000}) {
        addLoading(table, stage, count);
    }
    addDeleting(table, stage);
}
