// Formulas: a formula of the grammar has the value that a second, simple evaluator computes; any
// other text has no tree or names an unknown setting.

#include "CBGenerator/formula.h"

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "support/fuzztarget.h"

#include <cmath>
#include <optional>

using HParser::Formula;
using HParser::StructSetting;

namespace
{
const QList<StructSetting*>& settings()
{
    static const QList<StructSetting*> list = [] {
        static HParser::StructSettings owner(nullptr);
        QList<StructSetting*> made;
        for (const char* line :
             {"int a; // num, auto, 0, 9, x1, 0, \"A\", \"\", G, 3, 0, basic",
              "int b2; // num, auto, -99999, 9, x0.5, 3, \"B\", \"\", G, -7.125, 1, basic",
              "char on; // bool, 1, \"On\", G, 1, 2, basic",
              "char text[9]; // string, auto, \"Text\", G, \"12.5\", 3, basic"}) {
            made.append(new StructSetting(QString::fromLatin1(line), &owner));
        }
        owner.setOriginalOrderStructSettings(made);
        owner.setStructSettings(made);
        owner.buildFormulaTrees();
        return made;
    }();
    return list;
}

/// Evaluates while it reads, by recursive descent.
class Evaluator
{
public:
    explicit Evaluator(const QString& formulaText) : text(formulaText) {}

    /// Returns nothing for a text that the grammar does not allow or that is nested too deeply.
    std::optional<double> value()
    {
        constexpr int mostOperations = 1000;
        const std::optional<double> result = sum();
        return position == text.size() && operations <= mostOperations ? result : std::nullopt;
    }

private:
    std::optional<double> sum()
    {
        std::optional<double> left = product();
        while (left && (next() == '+' || next() == '-')) {
            const char sign = take();
            ++operations;
            const std::optional<double> right = product();
            left = !right ? right : sign == '+' ? *left + *right : *left - *right;
        }
        return left;
    }

    std::optional<double> product()
    {
        std::optional<double> left = operand();
        while (left && (next() == '*' || next() == '/')) {
            const char sign = take();
            ++operations;
            const std::optional<double> right = operand();
            left = !right ? right : sign == '*' ? *left * *right : *left / *right;
        }
        return left;
    }

    std::optional<double> operand()
    {
        if (next() == '(') {
            return group();
        }
        const int start = position;
        if (next() == '+' || next() == '-') {
            take();
        }
        if (isDigit(next())) {
            return number(start);
        }
        return position == start ? variable() : std::nullopt;
    }

    std::optional<double> group()
    {
        constexpr int deepest = 100;
        take();
        if (++depth > deepest || position >= text.size()) {
            return std::nullopt;
        }
        const bool opensGroup = next() == '(';
        const int inner = position;
        const std::optional<double> result = sum();
        if (!result || next() != ')') {
            return std::nullopt;
        }
        const bool isDoubled = opensGroup && groupEnd(inner) == position;
        take();
        --depth;
        return isDoubled ? std::nullopt : result;
    }

    /// Returns the position after the group that opens at this position.
    int groupEnd(int opening) const
    {
        int open = 0;
        int end = opening;
        do {
            open += text.at(end) == QLatin1Char('(')   ? 1
                    : text.at(end) == QLatin1Char(')') ? -1
                                                       : 0;
            ++end;
        } while (open > 0 && end < text.size());
        return end;
    }

    std::optional<double> number(int start)
    {
        digits();
        if (next() == '.' && position + 1 < text.size()
            && isDigit(text.at(position + 1).toLatin1())) {
            take();
            digits();
        }
        return text.mid(start, position - start).toDouble();
    }

    std::optional<double> variable()
    {
        for (const StructSetting* setting : settings()) {
            const int end = position + setting->variableName.size();
            const bool endsThere = end >= text.size() || !isNamePart(text.at(end));
            if (text.mid(position).startsWith(setting->variableName) && endsThere) {
                position = end;
                return setting->getValue().toDouble();
            }
        }
        return std::nullopt;
    }

    void digits()
    {
        while (isDigit(next())) {
            take();
        }
    }

    static bool isDigit(char c) { return c >= '0' && c <= '9'; }
    static bool isNamePart(QChar c)
    {
        return c.isLetterOrNumber() || c.isMark() || c == QLatin1Char('_');
    }
    char next() const { return position < text.size() ? text.at(position).toLatin1() : '\0'; }
    char take()
    {
        const char c = next();
        ++position;
        return c;
    }

    QString text;
    int position = 0;
    int depth = 0;
    int operations = 0;
};

bool sameNumber(double one, double other)
{
    return one == other || (std::isnan(one) && std::isnan(other));
}

/// Returns the value of this formula in a schema; nothing if loading the schema would end the
/// program.
std::optional<double> valueOf(const QString& text)
{
    Formula formula(text, nullptr);
    std::optional<double> value;
    FuzzTarget::runsToItsEnd([&] {
        formula.buildFormulaTree(settings());
        formula.visitSettings([](StructSetting*) {});
        value = formula.toDouble();
    });
    FUZZ_EXPECT(formula.hasTree() || !value);
    return value;
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(FuzzTarget::bytesOf(data, size));
    const std::optional<double> value = valueOf(text);

    QString compact;
    for (const QChar c : text) {
        if (!c.isSpace()) {
            compact.append(c);
        }
    }
    const std::optional<double> expected = Evaluator(compact).value();
    if (expected) {
        FUZZ_EXPECT(value.has_value());
        FUZZ_EXPECT(sameNumber(*value, *expected));
        const std::optional<double> negated = valueOf(QStringLiteral("0 - 1 * (%1) ").arg(compact));
        const bool isGroup = compact.startsWith(QLatin1Char('('));
        FUZZ_EXPECT(isGroup || (negated && sameNumber(*negated, 0 - 1 * *value)));
    }
    return 0;
}
