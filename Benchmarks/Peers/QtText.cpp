// Rows of text and paths in Qt Core.

#include <Bench.h>
#include <Inputs.h>

#include <QtCore/QByteArray>
#include <QtCore/QFileInfo>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QStringRef>
#include <QtCore/QVector>

#include <utility>

using namespace Inputs;

namespace
{
QString Wide(const std::string& sText)
{
    return QString::fromLatin1(sText.data(), static_cast<int>(sText.size()));
}

template<class TString> void Copy(benchmark::State& oState, TString oSource)
{
    for (auto _ : oState)
    {
        Touch(oSource);
        TString oString(oSource);
        Touch(oString);
    }
}

void CompareNoCase(benchmark::State& oState, const std::string& sText)
{
    QString oFirst = Wide(sText);
    const QString oSecond = oFirst.toUpper();
    for (auto _ : oState)
    {
        Touch(oFirst);
        Use(oFirst.compare(oSecond, Qt::CaseInsensitive));
    }
}

// Every replacement begins with a text of its own.
void ReplaceGrowing(benchmark::State& oState)
{
    const QString oText = Wide(TextToReplace(4096));
    const QString oOld = Wide(OLD_WORD);
    const QString oNew = Wide(LONG_WORD);
    for (auto _ : oState)
    {
        QString oString(oText.constData(), oText.size());
        oString.replace(oOld, oNew);
        Touch(oString);
    }
}
} // namespace

BENCH("string/construct24", "QByteArray")
{
    const char* const szText = Hide(TEXT24);
    for (auto _ : oState)
    {
        QByteArray oString(szText);
        Touch(oString);
    }
}

BENCH("string/construct24 16-bit", "QString(QChar*,n)")
{
    const QString oText = Wide(TEXT24);
    const QChar* const pText = Hide(oText.constData());
    const int nLength = Hide(oText.size());
    for (auto _ : oState)
    {
        QString oString(pText, nLength);
        Touch(oString);
    }
}

BENCH("string/copy24", "QString")
{
    Copy(oState, Wide(TEXT24));
}

BENCH("string/copy200", "QString")
{
    Copy(oState, Wide(Text200()));
}

BENCH("string/copy24 16-bit", "QString")
{
    Copy(oState, Wide(TEXT24));
}

BENCH("string/copy200 wide", "QString")
{
    Copy(oState, Wide(Text200()));
}

BENCH("string/append1x1000", "QByteArray")
{
    for (auto _ : oState)
    {
        QByteArray oString;
        for (int nCharacter = 0; nCharacter < 1000; ++nCharacter)
            oString.append('x');
        Touch(oString);
    }
    oState.SetItemsProcessed(oState.iterations() * 1000);
}

BENCH("string/append1x1000 wide", "QString")
{
    for (auto _ : oState)
    {
        QString oString;
        for (int nCharacter = 0; nCharacter < 1000; ++nCharacter)
            oString.append(QLatin1Char('x'));
        Touch(oString);
    }
    oState.SetItemsProcessed(oState.iterations() * 1000);
}

BENCH("string/concat24+24 16-bit", "QString")
{
    const QString oFirst = Wide(TEXT24);
    const QString oSecond = Wide(OTHER24);
    for (auto _ : oState)
    {
        QString oString = oFirst + oSecond;
        Touch(oString);
    }
}

BENCH("string/findsub1K", "QByteArray::indexOf")
{
    QByteArray oString(TextWithNeedle(1024).c_str());
    const QByteArray oNeedle(NEEDLE);
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.indexOf(oNeedle));
    }
}

BENCH("string/findsub1K 16-bit", "QString::indexOf")
{
    QString oString = Wide(TextWithNeedle(1024));
    const QString oNeedle = Wide(NEEDLE);
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.indexOf(oNeedle));
    }
}

BENCH("string/findchar1K wide", "QString::indexOf")
{
    QString oString = Wide(TextWithCharacter(1024));
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.indexOf(QLatin1Char(NEEDLE_CHARACTER)));
    }
}

BENCH("string/replace4Ksame wide", "QString::replace")
{
    QString oString = Wide(TextToReplace(4096));
    QString oOld = Wide(OLD_WORD);
    QString oNew = Wide(SAME_WORD);
    for (auto _ : oState)
    {
        oString.replace(oOld, oNew);
        Touch(oString);
        oOld.swap(oNew);
    }
}

BENCH("string/replace4Kgrow wide", "QString::replace")
{
    ReplaceGrowing(oState);
}

BENCH("string/split1K", "QByteArray::split")
{
    QByteArray oString(TextToSplit(1024).c_str());
    for (auto _ : oState)
    {
        Touch(oString);
        QList<QByteArray> aParts = oString.split(SEPARATOR);
        Touch(aParts);
    }
}

BENCH("string/split1K wide", "QString::split")
{
    QString oString = Wide(TextToSplit(1024));
    for (auto _ : oState)
    {
        Touch(oString);
        QStringList aParts = oString.split(QLatin1Char(SEPARATOR));
        Touch(aParts);
    }
}

BENCH("string/tolower1K", "QByteArray::toLower")
{
    QByteArray oString(MixedText(1024).c_str());
    for (auto _ : oState)
    {
        Touch(oString);
        QByteArray oLower = oString.toLower();
        Touch(oLower);
    }
}

BENCH("string/tolower1K wide", "QString::toLower")
{
    QString oString = Wide(MixedText(1024));
    for (auto _ : oState)
    {
        Touch(oString);
        QString oLower = oString.toLower();
        Touch(oLower);
    }
}

BENCH("string/icompare24 wide", "QString::compare CI")
{
    CompareNoCase(oState, TEXT24);
}

BENCH("string/icompare200 wide", "QString::compare CI")
{
    CompareNoCase(oState, Text200());
}

BENCH("string/intparse7 wide", "QString::toInt")
{
    QString oString = Wide(NUMBER7);
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.toInt());
    }
}

BENCH("string/doubleparse 16-bit", "QString::toDouble")
{
    QString oString = Wide(NUMBER_DOUBLE);
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.toDouble());
    }
}

BENCH("string/format_sds wide", "QString::arg")
{
    const QString oFormat = Wide("%1 has %2 parts of %3");
    const QString oFirst = Wide("catalogue");
    const QString oSecond = Wide("the library");
    for (auto _ : oState)
    {
        QString oString = oFormat.arg(oFirst, QString::number(Hide(4711)), oSecond);
        Touch(oString);
    }
}

BENCH("string/format_f", "QByteArray::number")
{
    for (auto _ : oState)
    {
        QByteArray oString = QByteArray::number(Hide(NUMBER_FIXED), 'f', 6);
        Touch(oString);
    }
}

BENCH("string/begins+ends", "QByteArray")
{
    QByteArray oString(TextWithEnds().c_str());
    const QByteArray oPrefix(PREFIX8);
    const QByteArray oSuffix(SUFFIX8);
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.startsWith(oPrefix));
        Use(oString.endsWith(oSuffix));
    }
}

BENCH("string/begins+ends wide", "QString")
{
    QString oString = Wide(TextWithEnds());
    const QString oPrefix = Wide(PREFIX8);
    const QString oSuffix = Wide(SUFFIX8);
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.startsWith(oPrefix));
        Use(oString.endsWith(oSuffix));
    }
}

BENCH("path/parse+iterate6", "QString::splitRef")
{
    QString oText = Wide(PATH6);
    for (auto _ : oState)
    {
        Touch(oText);
        int nTotal = 0;
        for (const QStringRef& oComponent : oText.splitRef(QLatin1Char('/')))
            nTotal += oComponent.size();
        Use(nTotal);
    }
}

BENCH("path/extension", "QFileInfo::suffix")
{
    const QString oText = Wide(PATH6);
    for (auto _ : oState)
    {
        QString oSuffix = QFileInfo(oText).suffix();
        Touch(oSuffix);
    }
}
