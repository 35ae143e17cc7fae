#include "CBGenerator/structsettings.h"

#include "CBGenerator/formula.h"
#include "support/schematext.h"
#include "support/standardoutputcapture.h"

#include <gtest/gtest.h>

#include <QPointer>
#include <QSignalSpy>

#include <csignal>

using HParser::Formula;
using HParser::StructSetting;
using HParser::StructSettings;
using SchemaText::liveStruct;
using SchemaText::member;
using SchemaText::NumLine;
using SchemaText::parsedStruct;
using SchemaText::utf8;

namespace
{
const QStringList& oneOfEachKind()
{
    static const QStringList lines = {
        NumLine("n").defaultValue("2.5").decimals("1").index("3"),
        "char f; // bool, 1, \"Flag\", G, 1, 2, basic",
        "char s[12]; // string, auto, \"Text\", G, \"Hello\", 1, basic",
        "char l[12]; // list, 8, \"List\", G, \"Two\", 0, \"One\", \"Two\", basic"};
    return lines;
}

std::string names(const QList<StructSetting*>& settings)
{
    QStringList texts;
    for (const StructSetting* setting : settings) {
        texts.append(setting->variableName);
    }
    return utf8(texts.join(' '));
}

double numberOf(const StructSettings& settings, const char* name)
{
    return member(settings, QString(name))->number();
}

void evaluateHiddenName()
{
    sendStandardOutputToStandardError();
    auto settings = parsedStruct({NumLine("hidden"), NumLine("b").bounds("0", "hidden + 1")});
    settings->setStructSettings({member(*settings, "b")});
    settings->buildFormulaTrees();
    member(*settings, "b")->setValue(1.0);
}
} // namespace

TEST(StructSettingsTest, StartsEmpty)
{
    const StructSettings settings(nullptr);
    EXPECT_EQ(utf8(settings.getDescriptiveName()), "");
    EXPECT_FALSE(settings.getGlobal());
    EXPECT_TRUE(settings.getStructSettings().isEmpty());
    EXPECT_TRUE(settings.getOriginalOrderStructSettings().isEmpty());
    EXPECT_FALSE(settings.getAdvancedSettingsEdited());
}

TEST(StructSettingsTest, KeepsItsFields)
{
    StructSettings settings(nullptr);
    settings.setDescriptiveName("Li Ion");
    settings.setGlobal(true);
    settings.setAdvancedSettingsEdited(true);
    EXPECT_EQ(utf8(settings.getDescriptiveName()), "Li Ion");
    EXPECT_TRUE(settings.getGlobal());
    EXPECT_TRUE(settings.getAdvancedSettingsEdited());
}

TEST(StructSettingsTest, DestroysItsSettings)
{
    auto settings = parsedStruct(oneOfEachKind());
    const QPointer<StructSetting> first = settings->getOriginalOrderStructSettings().first();
    const QPointer<StructSetting> last = settings->getOriginalOrderStructSettings().last();
    settings.reset();
    EXPECT_TRUE(first.isNull());
    EXPECT_TRUE(last.isNull());
}

TEST(StructSettingsTest, OwnsHiddenSettingsToo)
{
    auto settings = std::make_unique<StructSettings>(nullptr);
    const QPointer<StructSetting> hidden = new StructSetting(NumLine("a"), nullptr);
    settings->setOriginalOrderStructSettings({hidden});
    settings.reset();
    EXPECT_TRUE(hidden.isNull());
}

TEST(StructSettingsTest, EveryValueIsItsDefaultAfterWiring)
{
    const auto settings = parsedStruct(oneOfEachKind())->deepCopy();
    settings->buildFormulaTrees();
    EXPECT_EQ(utf8(member(*settings, "n")->getValue()), "2.5");
    EXPECT_EQ(utf8(member(*settings, "f")->getValue()), "true");
    EXPECT_EQ(utf8(member(*settings, "s")->getValue()), "Hello");
    EXPECT_EQ(utf8(member(*settings, "l")->getValue()), "Two");
}

TEST(StructSettingsTest, DefaultsAreNotClampedAndSendNoSignal)
{
    const auto settings =
        parsedStruct({NumLine("a").defaultValue("250.75"), NumLine("b").bounds("0", "a")});
    const QSignalSpy changes(member(*settings, "a"), &StructSetting::numValueChanged);
    settings->buildFormulaTrees();
    EXPECT_EQ(numberOf(*settings, "a"), 250.75);
    EXPECT_EQ(changes.count(), 0);
}

TEST(StructSettingsTest, DefaultFollowsEarlierSettings)
{
    const auto settings =
        liveStruct({NumLine("a").defaultValue("4"), NumLine("b").defaultValue("a * 2"),
                    NumLine("c").defaultValue("a + b")});
    EXPECT_EQ(numberOf(*settings, "b"), 8);
    EXPECT_EQ(numberOf(*settings, "c"), 12);
}

TEST(StructSettingsTest, DefaultCountsLaterSettingsAsZero)
{
    const auto settings = liveStruct({NumLine("a").defaultValue("later + text + flag + 1"),
                                      NumLine("later").defaultValue("4"),
                                      "char text[9]; // string, auto, \"T\", G, \"5\", 0, basic",
                                      "char flag; // bool, 1, \"F\", G, 1, 0, basic"});
    EXPECT_EQ(numberOf(*settings, "a"), 1);
    EXPECT_EQ(numberOf(*settings, "later"), 4);
}

TEST(StructSettingsTest, FormulasNameOnlyShownSettings)
{
    auto settings = parsedStruct({NumLine("a").defaultValue("9"), NumLine("b").bounds("0", "a")});
    settings->setStructSettings(settings->getOriginalOrderStructSettings());
    settings->buildFormulaTrees();
    member(*settings, "b")->setValue(50.0);
    EXPECT_EQ(numberOf(*settings, "b"), 9);
}

TEST(StructSettingsTest, BoundFollowsAnotherSetting)
{
    const auto settings =
        liveStruct({NumLine("a").defaultValue("50"), NumLine("b").bounds("0", "a")});
    member(*settings, "b")->setValue(40.0);
    member(*settings, "a")->setValue(30.0);
    EXPECT_EQ(numberOf(*settings, "b"), 30);
    member(*settings, "a")->setValue(60.0);
    EXPECT_EQ(numberOf(*settings, "b"), 30);
}

TEST(StructSettingsTest, LowerBoundFollowsAnotherSetting)
{
    const auto settings =
        liveStruct({NumLine("a").defaultValue("0"), NumLine("b").bounds("a", "100")});
    member(*settings, "b")->setValue(10.0);
    member(*settings, "a")->setValue(30.0);
    EXPECT_EQ(numberOf(*settings, "b"), 30);
}

TEST(StructSettingsTest, ReclampsForEveryFormula)
{
    const QList<NumLine> lines = {NumLine("b").bounds("a - 100", "100"),
                                  NumLine("b").bounds("0", "a"), NumLine("b").scale("a"),
                                  NumLine("b").decimals("a / 100"), NumLine("b").defaultValue("a")};
    for (int i = 0; i < lines.size(); ++i) {
        const auto settings = liveStruct({NumLine("a"), lines.at(i)});
        const QSignalSpy changes(member(*settings, "b"), &StructSetting::numValueChanged);
        member(*settings, "a")->setValue(5.0);
        EXPECT_EQ(changes.count(), 1) << i;
    }
}

TEST(StructSettingsTest, ReclampsForEachTimeThatASettingIsNamed)
{
    const QList<QPair<NumLine, int>> lines = {{NumLine("b").bounds("a + a", "100"), 2},
                                              {NumLine("b").bounds("a", "a * a"), 3},
                                              {NumLine("b").defaultValue("a + 1 - a - a"), 3}};
    for (const auto& line : lines) {
        const auto settings = liveStruct({NumLine("a"), line.first});
        const QSignalSpy changes(member(*settings, "b"), &StructSetting::numValueChanged);
        member(*settings, "a")->setValue(5.0);
        EXPECT_EQ(changes.count(), line.second);
    }
}

TEST(StructSettingsTest, VisualIndexFollowsNothing)
{
    const auto settings = liveStruct({NumLine("a"), NumLine("b").index("a")});
    const QSignalSpy changes(member(*settings, "b"), &StructSetting::numValueChanged);
    member(*settings, "a")->setValue(5.0);
    EXPECT_EQ(changes.count(), 0);
}

TEST(StructSettingsTest, DecimalPlacesFollowAnotherSetting)
{
    const auto settings =
        liveStruct({NumLine("places").defaultValue("2"), NumLine("b").decimals("places")});
    member(*settings, "b")->setValue(1.25);
    EXPECT_DOUBLE_EQ(numberOf(*settings, "b"), 1.25);
    member(*settings, "places")->setValue(1.0);
    EXPECT_DOUBLE_EQ(numberOf(*settings, "b"), 1.3);
}

TEST(StructSettingsTest, AdvancedSettingFollowsItsDefault)
{
    const auto settings =
        liveStruct({NumLine("a").defaultValue("5"), NumLine("b").defaultValue("a * 2").advanced()});
    EXPECT_EQ(numberOf(*settings, "b"), 10);
    member(*settings, "a")->setValue(7.0);
    EXPECT_EQ(numberOf(*settings, "b"), 14);
    member(*settings, "b")->enableAdvancedMode(true);
    member(*settings, "b")->setValue(3.0);
    member(*settings, "a")->setValue(8.0);
    EXPECT_EQ(numberOf(*settings, "b"), 3);
}

TEST(StructSettingsTest, ChangesTravelAlongChains)
{
    const auto settings = liveStruct({NumLine("c").bounds("0", "b").defaultValue("100"),
                                      NumLine("b").bounds("0", "a").defaultValue("100"),
                                      NumLine("a").defaultValue("100")});
    member(*settings, "a")->setValue(40.0);
    EXPECT_EQ(numberOf(*settings, "b"), 40);
    EXPECT_EQ(numberOf(*settings, "c"), 40);
    member(*settings, "b")->setValue(20.0);
    EXPECT_EQ(numberOf(*settings, "a"), 40);
    EXPECT_EQ(numberOf(*settings, "c"), 20);
}

TEST(StructSettingsTest, TemplateStaysUntouchedByACopy)
{
    auto original = liveStruct({NumLine("a").defaultValue("50"), NumLine("b").bounds("0", "a")});
    member(*original, "b")->setValue(45.0);
    const auto copy = original->deepCopy();
    copy->buildFormulaTrees();
    member(*copy, "a")->setValue(1.0);
    EXPECT_EQ(numberOf(*original, "a"), 50);
    EXPECT_EQ(numberOf(*original, "b"), 45);
    member(*copy, "b")->setValue(1.0);
    member(*original, "a")->setValue(2.0);
    EXPECT_EQ(numberOf(*copy, "a"), 1);
    EXPECT_EQ(numberOf(*copy, "b"), 1);
}

TEST(StructSettingsTest, CopyOutlivesItsTemplate)
{
    auto original = parsedStruct({NumLine("a").defaultValue("50"), NumLine("b").bounds("0", "a")});
    const auto copy = original->deepCopy();
    original.reset();
    copy->buildFormulaTrees();
    member(*copy, "b")->setValue(90.0);
    EXPECT_EQ(numberOf(*copy, "b"), 50);
}

TEST(StructSettingsTest, CopyCarriesNameGlobalFlagAndBothOrders)
{
    auto original = parsedStruct(oneOfEachKind());
    original->setDescriptiveName("Li Ion");
    original->setGlobal(true);
    original->setAdvancedSettingsEdited(true);
    const auto copy = original->deepCopy();
    EXPECT_EQ(copy->parent(), nullptr);
    EXPECT_EQ(utf8(copy->getDescriptiveName()), "Li Ion");
    EXPECT_TRUE(copy->getGlobal());
    EXPECT_FALSE(copy->getAdvancedSettingsEdited());
    EXPECT_EQ(names(copy->getOriginalOrderStructSettings()), "n f s l");
    EXPECT_EQ(names(copy->getStructSettings()), "l s f n");
    for (StructSetting* setting : copy->getOriginalOrderStructSettings()) {
        EXPECT_FALSE(original->getOriginalOrderStructSettings().contains(setting));
    }
    for (StructSetting* setting : copy->getStructSettings()) {
        EXPECT_TRUE(copy->getOriginalOrderStructSettings().contains(setting));
    }
}

TEST(StructSettingsTest, CopyLeavesUnusableIndicesOutOfTheVisualOrder)
{
    const auto original = parsedStruct({NumLine("a").index("0.5"), NumLine("b").index("1"),
                                        NumLine("c").index("a"), "char gap; // reserved, 0",
                                        NumLine("d").index("0"), NumLine("e").index("6")});
    const auto copy = original->deepCopy();
    EXPECT_EQ(names(copy->getOriginalOrderStructSettings()), "a b c gap d e");
    EXPECT_EQ(names(copy->getStructSettings()), "d b");
}

TEST(StructSettingsTest, UnknownKindAndUnusableIndexComeToLifeUnharmed)
{
    const auto copy = parsedStruct({"char gap; // reserved, 0", NumLine("a").index("+(%"),
                                    NumLine("b").defaultValue("3").index("0")})
                          ->deepCopy();
    const StandardOutputCapture output;
    copy->buildFormulaTrees();
    copy->print();
    EXPECT_EQ(numberOf(*copy, "b"), 3);
    EXPECT_EQ(utf8(member(*copy, "gap")->getValue()), "ERROR");
}

TEST(StructSettingsTest, FindsTheFirstSettingOfExactlyThatLabel)
{
    const auto settings =
        parsedStruct({NumLine("a").label("Current"), NumLine("b").label("active"),
                      NumLine("c").label("active"), NumLine("d").label("Active")});
    EXPECT_EQ(settings->getStructSettingByDescriptiveName("active"), member(*settings, "b"));
    EXPECT_EQ(settings->getStructSettingByDescriptiveName("Active"), member(*settings, "d"));
    EXPECT_EQ(settings->getStructSettingByDescriptiveName("ACTIVE"), nullptr);
    EXPECT_EQ(settings->getStructSettingByDescriptiveName("current"), nullptr);
    EXPECT_EQ(settings->getStructSettingByDescriptiveName("b"), nullptr);
}

TEST(StructSettingsTest, FindsHiddenSettingsByTheirLabel)
{
    const auto settings = parsedStruct({NumLine("t").label("type"), NumLine("a").label("Title")});
    settings->setStructSettings({member(*settings, "a")});
    EXPECT_EQ(settings->getStructSettingByDescriptiveName("type"), member(*settings, "t"));
}

TEST(StructSettingsTest, PrintsItself)
{
    auto settings = liveStruct({NumLine("a").label("First"), NumLine("b").label("Second")});
    settings->setDescriptiveName("Li Ion");
    const StandardOutputCapture output;
    settings->print();
    const std::string text = output.text();
    EXPECT_EQ(text.find("Chemistry : Li Ion\nisGlobal : false\nSettings--- \nNUM type setting\n"),
              0U);
    EXPECT_LT(text.find("Variable Name : a\n"), text.find("Variable Name : b\n"));
    EXPECT_NE(text.find("Variable Name : b\n"), std::string::npos);
}

TEST(StructSettingsDeathTest, NamingAHiddenSettingIsFatalWhenEvaluated)
{
    EXPECT_EXIT(evaluateHiddenName(), ::testing::KilledBySignal(SIGABRT), "hidden \\+ 1");
}
