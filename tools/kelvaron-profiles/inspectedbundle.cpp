#include "inspectedbundle.h"

#include "base/textfile.h"
#include "inputfile.h"
#include "schemareview/bundlereview.h"

#include <QFileInfo>

InspectedBundle::InspectedBundle(const QString& path) : bundlePath(path), bundle(path) {}

bool InspectedBundle::readSections()
{
    problem = InputFile::fault(bundlePath);
    if (!problem.isEmpty()) {
        return false;
    }
    text = TextFile::read(bundlePath).value_or(QString());
    bundle.parseBundle();
    if (sectionCount() == 0) {
        problem = QStringLiteral("is not a bundle: it has no sections");
        return false;
    }
    return true;
}

QString InspectedBundle::describeSection(int index) const
{
    return QStringLiteral("section %1 (%2)").arg(QString::number(index), sectionName(index));
}

bool InspectedBundle::isIntact(int index) const
{
    return index == sectionCount() - 1
           || bundle.checksumLines().value(index).text == bundle.checksumOf(index);
}

Problems InspectedBundle::sectionProblems() const
{
    return BundleReview::sectionProblems(text);
}

Problems InspectedBundle::keyProblems() const
{
    return BundleReview::keyProblems(text, QFileInfo(bundlePath).fileName());
}

QMap<QString, QString> InspectedBundle::keys()
{
    if (KelvaronBundle::hasSoundKeyBlock(bundlePath)) {
        bundle.parseKeyValuePairs();
    }
    return bundle.getKeyValuePairs();
}
