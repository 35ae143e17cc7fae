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
/// decimal places, texts are truncated to their C array. Formulas are children of the setting.
/// Stages of its life: parsed (formulas contain only text), connected by the struct
/// (buildFormulaTrees and the two attach calls), edited.
class StructSetting : public QObject
{
    Q_OBJECT

public:
    enum SettingType : int
    {
        UNKNOWN = -1, ///< none of the four keywords: never shown, no value
        NUM = 0,
        BOOL = 1,
        STRING = 2,
        LIST = 3
    };

    /// The current value: double for NUM, bool for BOOL, QString for STRING and LIST.
    using Value = std::variant<std::monostate, double, bool, QString>;

    /// The value of a new profile; a formula (child of this setting) for NUM.
    using DefaultValue = std::variant<std::monostate, Formula*, bool, QString>;

    /// Creates an empty setting of unknown kind, to be filled by a copy.
    explicit StructSetting(QObject* parent);

    /// Parses one member line. A malformed line is a fatal assertion: an empty part, or too few
    /// fields ("index out of range").
    StructSetting(const QString& line, QObject* parent);
    StructSetting(const MemberLine& line, QObject* parent);

    /// Returns why the line cannot be parsed; nothing if it can.
    static std::optional<SchemaFault> faultOf(const MemberLine& line);

    /// Returns, for NUM, the number with 6 significant digits; BOOL: "true" or "false"; STRING and
    /// LIST: the text; unknown kind: "ERROR".
    QString getValue() const;

    /// NUM: clamps, rounds and stores; then emits numValueChanged(). An advanced setting outside
    /// advanced mode takes its default instead. Not-a-number counts as the lower bound.
    /// REQUIRES: a NUM whose formulas are built.
    void setValue(double value);

    /// STRING, LIST: stores the first arraySize - 1 characters; all of them if arraySize is 0. A
    /// surrogate pair is never split.
    void setValue(const QString& text);

    /// BOOL: stores the flag.
    void setValue(bool flag);

    void setValue(const char*) = delete; // would silently become a bool

    /// Stores the value of a text unchanged: no clamping, no truncation, no signal. NUM: 0 for a
    /// text that is not a finite number; BOOL: true only for "true".
    void storeValueFromText(const QString& text);

    /// Returns the number as setValue() would store it, ignoring the advanced rule; stores nothing.
    double setInBoundsAndDecPlaces(double value) const;

    /// Stores, for NUM, the default formula's value, neither clamped nor rounded; for the others
    /// the default.
    void copyDefaultValueIntoCurrentValue();

    /// Sets the value again to what getValue() returns, with the setter's rules. A number is cut to 6
    /// significant digits.
    void updateValue();

    /// Returns a copy of the description without parent, current value and formula trees; the
    /// caller owns it.
    StructSetting* deepCopy() const;

    /// NUM: builds the trees of all formulas; names are looked up in `siblings`.
    void buildFormulaTrees(const QList<StructSetting*>& siblings);

    /// NUM: connects the settings that its formulas name to those formulas.
    void attachMemberSettingSignalsToContainerFormulaSlots();

    /// NUM: re-clamps this setting whenever one of its formulas reports a change.
    void attachMemberFormulaSignalsToThisSettingsSlot();

    /// Switches advanced mode of an advanced setting and emits enableView(); does nothing for a
    /// basic one.
    void enableAdvancedMode(bool on);

    /// Returns the display position given by the visual index text; nothing if the text is not a
    /// number. Never evaluates the formula.
    std::optional<double> visualPosition() const;

    /// Returns the formulas that are evaluated: lower and upper bound, scale factor, decimal
    /// places, default. Empty for the other kinds.
    QList<Formula*> evaluatedFormulas() const;

    /// Returns the current flag of a BOOL; false for other kinds.
    bool isOn() const;

    /// Returns the current number of a NUM; 0 for other kinds.
    double number() const;

    /// Returns the text of getValue() as a number, which is what formulas of other settings use: 6
    /// significant digits. 0 for a text that is not a number.
    double textAsNumber() const;

    /// Writes every field to standard output.
    void printSetting() const;

    /// Returns the number in the first "[...]"; 0 if there is none.
    static int getNumInSquareBrackets(const QString& text);

    /// Returns the items of a LIST line's pieces. REQUIRES: 7 pieces or more (fatal assertion).
    static QStringList getList(const QStringList& pieces);

    /// Returns the first quoted run of letters, digits, underscores and white space, without its
    /// quotes; empty if there is none.
    static QString getStringInQuotes(const QString& text);

    /// Returns the text without its first and last characters, whatever these are.
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
    Formula* visualIndex = nullptr; ///< read as text, never evaluated; null for unknown kind
    bool isBasic = false;
    QStringList list; ///< LIST: the items in header order
    bool advancedModeEnabled = false;

signals:
    /// Emitted after every setValue(double).
    void numValueChanged();

    /// Emitted to enable or disable the editor of an advanced setting.
    void enableView(bool on);

public slots:
    /// Clamps the value again after its bounds may have changed.
    void on_formulasMemberSettingChanged();

private:
    void readDeclaration(const MemberLine& line);
    void readFields(const MemberLine& line);
    Formula* newFormula(const QString& text);
    Formula* copyOf(const Formula* formula);
    void initialiseValue();
    QString defaultValueText() const;

    // The last number and result of textAsNumber(): fifty bounds may depend on one setting.
    mutable double lastNumber = std::numeric_limits<double>::quiet_NaN();
    mutable double lastTextNumber = 0;
};
} // namespace HParser
