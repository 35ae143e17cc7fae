#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <limits>
#include <optional>
#include <variant>

namespace HParser
{
class Formula;
class MemberLine;
struct SchemaFault;

/// One member of a settings struct of the schema header: its description and its guarded value.
///
/// A header line is "<C type> <name>[<array size>]; // <kind>, <comma-separated fields>" (see
/// docs/file-formats/schema-header.md). Numbers are clamped to their bounds and rounded to their
/// decimal places, texts are cut to their C array. Formulas belong to the setting as children.
/// Life: parsed (formulas hold text only), wired by the struct (buildFormulaTrees and the two
/// attach calls), edited.
class StructSetting : public QObject
{
    Q_OBJECT

public:
    enum SettingType : int
    {
        UNKNOWN = -1, ///< keyword is none of the four: never shown, no value
        NUM = 0,
        BOOL = 1,
        STRING = 2,
        LIST = 3
    };

    /// The current value: double for NUM, bool for BOOL, QString for STRING and LIST.
    using Value = std::variant<std::monostate, double, bool, QString>;

    /// The value of a new profile; a formula (child of this setting) for NUM.
    using DefaultValue = std::variant<std::monostate, Formula*, bool, QString>;

    /// An empty setting of unknown kind, to be filled by a copy.
    explicit StructSetting(QObject* parent);

    /// Parses one member line. A malformed line is a fatal assertion: an empty part, or too few
    /// fields ("index out of range").
    StructSetting(const QString& line, QObject* parent);
    StructSetting(const MemberLine& line, QObject* parent);

    /// Returns why the line cannot be parsed; nothing if it can.
    static std::optional<SchemaFault> faultOf(const MemberLine& line);

    /// NUM: the number with 6 significant digits; BOOL: "true" or "false"; STRING and LIST: the
    /// text; unknown kind: "ERROR".
    QString getValue() const;

    /// NUM: clamps, rounds and stores; then emits numValueChanged(). An advanced setting outside
    /// advanced mode takes its default instead. Not-a-number counts as the lower bound.
    /// REQUIRES: a NUM whose formulas are built.
    void setValue(double value);

    /// STRING, LIST: stores the first arraySize - 1 characters; all of them when arraySize is 0.
    /// Half a surrogate pair is never left at the cut.
    void setValue(const QString& text);

    /// BOOL: stores the flag.
    void setValue(bool flag);

    void setValue(const char*) = delete; // would silently become a bool

    /// Stores the value that a text stands for, as it is: no clamping, no cut, no signal. NUM: 0 for
    /// a text that is no finite number; BOOL: true exactly for "true".
    void storeValueFromText(const QString& text);

    /// What setValue() would make of a number outside the advanced rule; stores nothing.
    double setInBoundsAndDecPlaces(double value) const;

    /// NUM: the default formula's value, neither clamped nor rounded; the others: the default.
    void copyDefaultValueIntoCurrentValue();

    /// Sets the value again to what getValue() returns, with the setter's rules. A number is cut to 6
    /// significant digits.
    void updateValue();

    /// A copy of the description without parent, current value and formula trees; the caller owns
    /// it.
    StructSetting* deepCopy() const;

    /// NUM: builds the trees of all formulas; names are looked up in `siblings`.
    void buildFormulaTrees(const QList<StructSetting*>& siblings);

    /// NUM: has the settings that its formulas name report their changes to those formulas.
    void attachMemberSettingSignalsToContainerFormulaSlots();

    /// NUM: re-clamps this setting whenever one of its formulas reports a change.
    void attachMemberFormulaSignalsToThisSettingsSlot();

    /// Switches advanced mode of an advanced setting and emits enableView(); nothing for a basic
    /// one.
    void enableAdvancedMode(bool on);

    /// The display position that the visual index text stands for; nothing when it does not convert
    /// to a number. Never evaluates the formula.
    std::optional<double> visualPosition() const;

    /// The formulas that are evaluated: lower and upper bound, scale factor, decimal places,
    /// default. Empty for the other kinds.
    QList<Formula*> evaluatedFormulas() const;

    /// BOOL: the current flag; false for other kinds.
    bool isOn() const;

    /// NUM: the current number; 0 for other kinds.
    double number() const;

    /// The number that the text of getValue() stands for: as others see this setting, with 6
    /// significant digits. 0 for a text that is not a number.
    double textAsNumber() const;

    /// Writes every field to standard output.
    void printSetting() const;

    /// The number in the first "[...]"; 0 when none can be read.
    static int getNumInSquareBrackets(const QString& text);

    /// The items of a LIST line's pieces. REQUIRES: 7 pieces or more (fatal assertion).
    static QStringList getList(const QStringList& pieces);

    /// The first quoted run of letters, digits, underscores and white space, without its quotes;
    /// empty when there is none.
    static QString getStringInQuotes(const QString& text);

    /// The text without its first and last characters, whatever these are.
    static QString stripOutQuotes(const QString& text);

    QString variableName;     ///< C member name, without any "[..]"
    QString variableDataType; ///< C type words, lower case, single blanks
    bool isArray = false;
    int arraySize = 0; ///< for texts the bytes including the terminating zero; 0: unknown
    SettingType settingType = UNKNOWN;
    QString size; ///< width in the profile image: bits as decimal digits, or "auto"
    Formula* lowerBound = nullptr;
    Formula* upperBound = nullptr;
    Formula* scaleFactor = nullptr; ///< physical value of one count of the stored integer
    Formula* decimalPlaces = nullptr;
    QString descriptiveName;
    QString units;
    QString categoryLabel;
    DefaultValue defaultValue;
    Value currentValue;
    Formula* visualIndex = nullptr; ///< read as text, never evaluated; none for unknown kind
    bool isBasic = false;
    QStringList list; ///< LIST: the items in header order
    bool advancedModeEnabled = false;

signals:
    /// After every setValue(double).
    void numValueChanged();

    /// An advanced setting's editor is to be enabled or disabled.
    void enableView(bool on);

public slots:
    /// Pulls the value back inside bounds that may have moved.
    void on_formulasMemberSettingChanged();

private:
    void readDeclaration(const MemberLine& line);
    void readFields(const MemberLine& line);
    Formula* newFormula(const QString& text);
    Formula* copyOf(const Formula* formula);
    void initialiseValue();
    QString defaultValueText() const;

    // What textAsNumber() was last asked for, and its answer: fifty bounds may follow one setting.
    mutable double lastNumber = std::numeric_limits<double>::quiet_NaN();
    mutable double lastTextNumber = 0;
};
} // namespace HParser
