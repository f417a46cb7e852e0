// XML documents: built, written without added blanks, read back the same, refused when broken.
#include "platform/xml/XmlDocument.h"

#include "platform/basic/Raises.h"

#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

using namespace platform;

namespace {

XmlDocumentPtr parsed(const QString& text) {
    const XmlDocumentPtr document = XmlDocument::create();
    EXPECT_TRUE(document->loadXML(text)) << text.left(200).toStdString();
    return document;
}

class XmlFile : public testing::Test {
protected:
    QString path() const { return m_folder.filePath("document.xml"); }
    void put(const QByteArray& content) const {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    QByteArray content() const {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    QTemporaryDir m_folder;
};

const QString programme = "<CustomMix PreGrind=\"2\" FreeSpin=\"1\"><Mix LiftRPM=\"1200\" MixRPM=\"1200\" "
                          "MixTime=\"00:10:00\" Cycles=\"0\"/></CustomMix>";

}  // namespace

TEST(XmlDocument, BuildsTheMixProgrammeToTheLetter) {
    const XmlDocumentPtr document = XmlDocument::create();
    XmlNode root = document->appendElement("CustomMix");
    root.setAttribute("PreGrind", "2");
    root.setAttribute("FreeSpin", "1");
    XmlNode mix = root.appendElement("Mix");
    mix.setAttribute("LiftRPM", "1200");
    mix.setAttribute("MixRPM", "1200");
    mix.setAttribute("MixTime", "00:10:00");
    mix.setAttribute("Cycles", "0");
    EXPECT_EQ(document->xml(), programme);
    EXPECT_EQ(mix.xml(), u"<Mix LiftRPM=\"1200\" MixRPM=\"1200\" MixTime=\"00:10:00\" Cycles=\"0\"/>"_s);
    EXPECT_EQ(parsed(programme)->xml(), programme);
}

TEST(XmlDocument, ElementsComeInTheOrderTheyWereAdded) {
    const XmlDocumentPtr document = XmlDocument::create();
    XmlNode root = document->appendElement("Formula");
    root.appendElement("ID").setText("12");
    root.appendElement("Name").setText("A & B <x> \"q\" 'p'");
    root.appendElement("Empty");
    root.appendElement("Blank").setText("");
    EXPECT_EQ(document->xml(), u"<Formula><ID>12</ID><Name>A &amp; B &lt;x&gt; \"q\" 'p'</Name>"
                               u"<Empty/><Blank/></Formula>"_s);
    EXPECT_EQ(nodeText(*document, "//Formula/Name"), u"A & B <x> \"q\" 'p'"_s);
}

TEST(XmlDocument, WithoutRootItIsEmpty) {
    const XmlDocumentPtr document = XmlDocument::create();
    EXPECT_EQ(document->xml(), u""_s);
    EXPECT_FALSE(document->root());
    EXPECT_FALSE(document->selectSingleNode("//Formula/ID"));
    EXPECT_TRUE(document->getElementsByTagName("Mix").empty());
}

TEST(XmlDocument, HasOneRootAtMost) {
    const XmlDocumentPtr document = XmlDocument::create();
    document->appendElement("Configuration");
    EXPECT_RAISES(document->appendElement("Second"), error::invalidProcedureCall);
    EXPECT_EQ(document->xml(), u"<Configuration/>"_s);
}

TEST(XmlDocument, NamesThatXmlRefusesAreRefused) {
    const XmlDocumentPtr document = XmlDocument::create();
    for (const char* name : {"", " ", "a b", "1a", "a<b", "a\"", "-a", "a=\"1\""})
        EXPECT_RAISES(document->appendElement(name), error::invalidProcedureCall);
    XmlNode root = document->appendElement("Größe_1-a.b");
    EXPECT_RAISES(root.appendElement("a/b"), error::invalidProcedureCall);
    EXPECT_RAISES(root.setAttribute("a b", "1"), error::invalidProcedureCall);
    EXPECT_EQ(parsed(document->xml())->root().name(), u"Größe_1-a.b"_s);
}

TEST(XmlDocument, TextsReadBackExactly) {
    const QStringList texts = {"",
                               "plain",
                               " leading and trailing ",
                               "   ",
                               "a\tb",
                               "line\nline",
                               "CR\rLF\r\nend",
                               "&amp; & &#10; <!-- -->",
                               "]]>",
                               "\"'",
                               "äöü €",
                               "日本語",
                               "😀",
                               "\u00A0",
                               "tab\t",
                               "\n",
                               "\r\n",
                               "<![CDATA[x]]>",
                               "{\\rtf1}"};
    for (const QString& text : texts) {
        const XmlDocumentPtr document = XmlDocument::create();
        XmlNode root = document->appendElement("Translations");
        root.setAttribute("English", text);
        root.appendElement("T").setText(text);
        const QString xml = document->xml();
        const XmlDocumentPtr again = parsed(xml);
        EXPECT_EQ(again->root().attribute("English"), text) << xml.toStdString();
        EXPECT_EQ(nodeText(*again, "/Translations/T"), text) << xml.toStdString();
        EXPECT_EQ(again->xml(), xml);
    }
}

TEST(XmlDocument, AByteOrderMarkIsACharacterOfTheText) {
    for (const QString& text : {u"\uFEFF"_s, u"\uFEFF\uFEFFa"_s, u"a\uFEFF"_s}) {
        const XmlDocumentPtr document = XmlDocument::create();
        document->appendElement("T").setText(text);
        document->root().setAttribute("A", text);
        const XmlDocumentPtr again = parsed(document->xml());
        EXPECT_EQ(again->root().text(), text);
        EXPECT_EQ(again->root().attribute("A"), text);
    }
}

TEST(XmlDocument, CarriageReturnInAnAttributeIsACharacterReference) {
    const XmlDocumentPtr document = XmlDocument::create();
    document->appendElement("T").setAttribute("English", "is used,\rDelete?\n");
    EXPECT_EQ(document->xml(), u"<T English=\"is used,&#13;Delete?&#10;\"/>"_s);
}

TEST(XmlDocument, CharactersThatXmlCannotHoldAreReplaced) {
    QString bad = "a";
    bad += QChar(0);
    bad += QChar(1);
    bad += QChar(0x1F);
    bad += QChar(0xFFFE);
    bad += QChar(0xD800);  // half of a pair
    bad += u'b';
    const QString good = "a" + QString(5, QChar(0xFFFD)) + "b";
    const XmlDocumentPtr document = XmlDocument::create();
    XmlNode root = document->appendElement("T");
    root.setAttribute("English", bad);
    root.setText(bad);
    const XmlDocumentPtr again = parsed(document->xml());
    EXPECT_EQ(again->root().attribute("English"), good);
    EXPECT_EQ(again->root().text(), good);
    // A search for the same text finds what was stored of it.
    EXPECT_TRUE(document->selectSingleNode("//T[@English='" + bad + "']"));
}

TEST(XmlDocument, BlanksBetweenElementsAreDropped) {
    EXPECT_EQ(parsed("<?xml version=\"1.0\"?>\r\n<A>\r\n  <B>x</B>\n\t<C/> \n</A>\n")->xml(),
              u"<A><B>x</B><C/></A>"_s);
    EXPECT_EQ(parsed("<A> x <B/> y </A>")->xml(), u"<A> x <B/> y </A>"_s);
}

TEST(XmlDocument, TextIsJoinedOverAllDepths) {
    EXPECT_EQ(parsed("<A>1<B>2<C>3</C></B><!--no-->4<![CDATA[<5>]]></A>")->root().text(), u"1234<5>"_s);
    EXPECT_EQ(parsed("<A><B>1</B></A>")->selectSingleNode("A/B").text(), u"1"_s);
    EXPECT_EQ(parsed("<A><B/>2</A>")->selectSingleNode("A/B").text(), u""_s);
}

TEST(XmlDocument, SetTextReplacesTextAndNeverElements) {
    const XmlDocumentPtr document = parsed("<A x=\"1\">old<!--note--><![CDATA[ older]]></A>");
    document->root().setText("new");
    EXPECT_EQ(document->xml(), u"<A x=\"1\">new</A>"_s);
    document->root().setText("");
    EXPECT_EQ(document->xml(), u"<A x=\"1\"/>"_s);
    const XmlDocumentPtr parent = parsed("<A><B/></A>");
    EXPECT_RAISES(parent->root().setText("x"), error::invalidProcedureCall);
    EXPECT_EQ(parent->xml(), u"<A><B/></A>"_s);
}

TEST(XmlDocument, CommentsAreKept) {
    const QString text = "<!--ours--><A><!--mine--><B/></A>";
    const XmlDocumentPtr document = parsed(text);
    EXPECT_EQ(document->xml(), text);
    EXPECT_EQ(document->root().name(), u"A"_s);
}

TEST(XmlDocument, AttributesKeepTheirOrderWhenSetAgain) {
    const XmlDocumentPtr document = parsed("<A x=\"1\" y=\"2\"/>");
    document->root().setAttribute("x", "3");
    EXPECT_EQ(document->xml(), u"<A x=\"3\" y=\"2\"/>"_s);
    EXPECT_TRUE(document->root().hasAttribute("y"));
    EXPECT_FALSE(document->root().hasAttribute("Y"));
    EXPECT_RAISES(document->root().attribute("z"), error::objectNotSet);
}

TEST(XmlDocument, PathsFindTheFirstInDocumentOrder) {
    const XmlDocumentPtr document = parsed("<R><Mix a=\"1\"/><X><Mix a=\"2\"/></X><Mix a=\"3\"/></R>");
    EXPECT_EQ(document->selectSingleNode("//Mix").attribute("a"), u"1"_s);
    EXPECT_EQ(document->selectSingleNode("R/X/Mix").attribute("a"), u"2"_s);
    EXPECT_EQ(document->selectSingleNode("//Mix[@a='3']").attribute("a"), u"3"_s);
    EXPECT_FALSE(document->selectSingleNode("Mix"));
    EXPECT_FALSE(document->selectSingleNode("//None"));
    QString order;
    for (const XmlNode& node : document->getElementsByTagName("Mix"))
        order += node.attribute("a");
    EXPECT_EQ(order, u"123"_s);
    order.clear();
    for (const XmlNode& node : document->selectNodes("//Mix"))
        order += node.attribute("a");
    EXPECT_EQ(order, u"123"_s);
    EXPECT_EQ(document->root().selectSingleNode("X").selectSingleNode("Mix").attribute("a"), u"2"_s);
    EXPECT_EQ(document->getElementsByTagName("R").size(), 1U);
}

TEST(XmlDocument, BadPathsAreStatementErrors) {
    const XmlDocumentPtr document = parsed("<R>text<A x=\"1\"/></R>");
    for (const char* path : {"//Translate[@English='don't']", "", "//", "//A[", "1+1", "count(//A)", "//A/@x",
                             "//R/text()", "'text'", "$unknown"}) {
        EXPECT_RAISES(document->selectSingleNode(path), error::statement);
        EXPECT_RAISES(document->selectNodes(path), error::statement);
        EXPECT_RAISES(document->root().selectSingleNode(path), error::statement);
    }
    const QString nested = "//A" + u"[A"_s.repeated(50000) + u"]"_s.repeated(50000);
    EXPECT_RAISES(document->selectSingleNode(nested), error::statement);
}

TEST(XmlDocument, NothingRefusesToBeUsed) {
    const XmlNode nothing;
    EXPECT_FALSE(nothing);
    EXPECT_RAISES(nothing.name(), error::objectNotSet);
    EXPECT_RAISES(nothing.text(), error::objectNotSet);
    EXPECT_RAISES(nothing.xml(), error::objectNotSet);
    EXPECT_RAISES(nothing.attribute("a"), error::objectNotSet);
    EXPECT_RAISES(nothing.hasAttribute("a"), error::objectNotSet);
    EXPECT_RAISES(nothing.selectSingleNode("a"), error::objectNotSet);
    EXPECT_RAISES(XmlNode().setText("x"), error::objectNotSet);
    EXPECT_RAISES(XmlNode().setAttribute("a", "x"), error::objectNotSet);
    EXPECT_RAISES(XmlNode().appendElement("a"), error::objectNotSet);
    const XmlDocumentPtr document = parsed("<R/>");
    EXPECT_RAISES(document->root().appendCopy(document->selectSingleNode("CustomMix")), error::objectNotSet);
    EXPECT_EQ(document->xml(), u"<R/>"_s);
}

TEST(XmlDocument, NodeTextAndNodeValue) {
    const XmlDocumentPtr document =
        parsed("<Results><Version>2.1</Version><RX Value=\"B7\"/><No/></Results>");
    EXPECT_EQ(nodeText(*document, "Results/Version"), u"2.1"_s);
    EXPECT_EQ(nodeValue(*document, "Results/RX"), u"B7"_s);
    EXPECT_RAISES(nodeText(*document, "//Missing"), error::objectNotSet);
    EXPECT_RAISES(nodeValue(*document, "//Missing"), error::objectNotSet);
    EXPECT_RAISES(nodeValue(*document, "//No"), error::objectNotSet);
    EXPECT_RAISES(nodeText(*XmlDocument::create(), "//ID"), error::objectNotSet);
}

TEST(XmlDocument, CopiesAreDeepAndOnTheirOwn) {
    const XmlDocumentPtr source = parsed(programme);
    const XmlDocumentPtr clone = source->cloneDeep();
    XmlDocumentPtr target = XmlDocument::create();
    XmlNode formula = target->appendElement("Formula");
    formula.appendElement("ID").setText("1");
    const XmlNode copy = formula.appendCopy(clone->selectSingleNode("CustomMix"));
    EXPECT_EQ(target->xml(), "<Formula><ID>1</ID>" + programme + "</Formula>");
    EXPECT_EQ(copy.name(), u"CustomMix"_s);
    source->root().setAttribute("PreGrind", "9");
    clone->root().appendElement("Mix");
    EXPECT_EQ(target->xml(), "<Formula><ID>1</ID>" + programme + "</Formula>");
    formula.appendCopy(formula);
    EXPECT_EQ(target->getElementsByTagName("Formula").size(), 2U);
}

TEST(XmlDocument, NodesOutliveTheirDocumentAndItsReload) {
    XmlNode old;
    {
        const XmlDocumentPtr document = parsed("<A><B>kept</B></A>");
        old = document->selectSingleNode("A/B");
        EXPECT_TRUE(document->loadXML("<New/>"));
        EXPECT_EQ(document->xml(), u"<New/>"_s);
        EXPECT_EQ(old.text(), u"kept"_s);
        old.setText("changed");
        EXPECT_EQ(document->xml(), u"<New/>"_s);
    }
    EXPECT_EQ(old.xml(), u"<B>changed</B>"_s);
    EXPECT_EQ(old.selectSingleNode("/A/B").text(), u"changed"_s);
}

TEST(XmlDocument, BrokenTextsAreRefusedAndLeaveNothing) {
    const QStringList broken = {"",
                                " ",
                                "text",
                                "<A>",
                                "<A></B>",
                                "<A",
                                "<A/><B/>",
                                "<A/>text",
                                "<A x=1/>",
                                "<A x=\"1/>",
                                "</A>",
                                "<?xml version=\"1.0\"?>",
                                "<!-- only -->",
                                "<A>" + QString(QChar(1)) + "</A>",
                                "<A>" + QString(QChar(0)) + "</A>",
                                "<A><![CDATA[x</A>",
                                "<>",
                                "< A/>"};
    const XmlDocumentPtr document = XmlDocument::create();
    for (const QString& text : broken) {
        ASSERT_TRUE(document->loadXML("<Before/>"));
        EXPECT_FALSE(document->loadXML(text)) << text.toStdString();
        EXPECT_EQ(document->xml(), u""_s);
        EXPECT_FALSE(document->root());
    }
}

TEST(XmlDocument, AnAttributeGivenTwiceIsRefused) {
    const XmlDocumentPtr document = XmlDocument::create();
    EXPECT_FALSE(document->loadXML("<CustomMix><Mix Cycles=\"1\" LiftRPM=\"24\" Cycles=\"2\"/></CustomMix>"))
        << "which of the two would run is a guess";
    EXPECT_EQ(document->xml(), u""_s);
    EXPECT_TRUE(document->loadXML("<CustomMix><Mix Cycles=\"1\" cycles=\"2\"/></CustomMix>"));
}

TEST(XmlDocument, ReferencesToNoCharacterAreRefused) {
    const XmlDocumentPtr document = XmlDocument::create();
    for (const char* reference : {"&#0;", "&#x0;", "&#1;", "&#x1F;", "&#xD800;", "&#57343;", "&#xFFFE;",
                                  "&#x110000;", "&#4294967345;", "&#99999999999999999999;"}) {
        EXPECT_FALSE(document->loadXML(u"<Make>5%100</Make>"_s.arg(reference))) << reference;
        EXPECT_FALSE(document->loadXML(u"<Mix Cycles=\"5%1\"/>"_s.arg(reference))) << reference;
        EXPECT_EQ(document->xml(), u""_s);
        EXPECT_TRUE(document->loadXML(u"<a><!-- %1 --><![CDATA[%1]]></a>"_s.arg(reference)))
            << "no reference there";
        EXPECT_EQ(document->root().text(), QString(reference));
    }
    EXPECT_EQ(parsed("<a b=\"&#9;&#xd;\">&#x1F600;&#32;&#xFFFD;&#;&#x;&#12 &amp;#0;</a>")->root().text(),
              u"😀 �&#;&#x;&#12 &#0;"_s);
}

TEST(XmlDocument, NamesThatCouldNotBeWrittenAreNotRead) {
    const XmlDocumentPtr document = XmlDocument::create();
    for (const char* text : {"<a×/>", "<a ÷=\"1\"/>", "<a><b€/></a>"})
        EXPECT_FALSE(document->loadXML(text)) << text;
    EXPECT_TRUE(document->loadXML("<größe länge=\"1\"/>"));
}

TEST(XmlDocument, EntitiesAreNeverExpandedFromADefinition) {
    EXPECT_EQ(parsed("<!DOCTYPE r [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;\">"
                     "<!ENTITY f SYSTEM \"file:///etc/passwd\">]><r>&b;&f;</r>")
                  ->root()
                  .text(),
              u"&b;&f;"_s);
    EXPECT_EQ(parsed("<r>&lt;&gt;&amp;&quot;&apos;&#65;&#x42;</r>")->root().text(), u"<>&\"'AB"_s);
}

TEST(XmlDocument, VeryDeepNestingIsNoDanger) {
    constexpr int depth = 300'000;
    const QString text = u"<a>"_s.repeated(depth) + "x" + u"</a>"_s.repeated(depth);
    const XmlDocumentPtr document = parsed(text);
    EXPECT_EQ(document->root().text(), u"x"_s);
    EXPECT_EQ(document->xml().size(), text.size());
    EXPECT_EQ(document->getElementsByTagName("a").size(), static_cast<std::size_t>(depth));
    EXPECT_EQ(document->cloneDeep()->xml().size(), text.size());
    const XmlDocumentPtr other = parsed("<r/>");
    other->root().appendCopy(document->root());
    EXPECT_EQ(other->xml().size(), text.size() + 7);
    EXPECT_EQ(document->selectSingleNode("//a[not(a)]").xml(), u"<a>x</a>"_s);
}

TEST(XmlDocument, TenMegabytesOfText) {
    const QString large = u"äb&<\n"_s.repeated(2'000'000);
    const XmlDocumentPtr document = XmlDocument::create();
    document->appendElement("A").setText(large);
    EXPECT_EQ(parsed(document->xml())->root().text(), large);
}

TEST_F(XmlFile, SavesUtf8WithoutDeclaration) {
    const XmlDocumentPtr document = XmlDocument::create();
    XmlNode root = document->appendElement("Configuration");
    root.appendElement("DefCurrency").setText("€");
    document->save(path());
    EXPECT_EQ(content(), "<Configuration><DefCurrency>\xE2\x82\xAC</DefCurrency></Configuration>");
    const XmlDocumentPtr again = XmlDocument::create();
    EXPECT_TRUE(again->load(path()));
    EXPECT_EQ(again->xml(), document->xml());
    EXPECT_TRUE(again->load(m_folder.path() + "\\document.xml"));
}

TEST_F(XmlFile, SavingWhereNothingCanBeWrittenFails) {
    EXPECT_RAISES(parsed("<A/>")->save("/dev/full"), error::diskFull);
    EXPECT_RAISES(parsed("<A/>")->save(m_folder.filePath("none/a.xml")), error::deviceIo);
}

TEST_F(XmlFile, ReadsTheEncodingsOfItsTime) {
    const QString body = "<A n=\"Müller\">über</A>";
    const auto expectRead = [&](const QByteArray& bytes, const char* what) {
        put(bytes);
        const XmlDocumentPtr document = XmlDocument::create();
        EXPECT_TRUE(document->load(path())) << what;
        EXPECT_EQ(document->xml(), body) << what;
    };
    expectRead(body.toUtf8(), "UTF-8 without declaration");
    expectRead("\xEF\xBB\xBF" + body.toUtf8(), "UTF-8 with byte order mark");
    expectRead("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n" + body.toUtf8(), "UTF-8 declared");
    expectRead("<?xml version='1.0' encoding='ISO-8859-1'?>\r\n" + body.toLatin1(), "Latin-1");
    QStringEncoder little(QStringConverter::Utf16LE);
    const QString declared = "<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + body;
    expectRead("\xFF\xFE" + QByteArray(little.encode(declared)), "UTF-16 with byte order mark");
    QStringEncoder big(QStringConverter::Utf16BE);
    expectRead(big.encode(declared), "UTF-16 big-endian without mark");
}

TEST_F(XmlFile, OnlyTheDeclarationDeclaresTheEncoding) {
    put("<?xml-model encoding=\"ISO-8859-1\"?><a>ü</a>");
    const XmlDocumentPtr document = XmlDocument::create();
    ASSERT_TRUE(document->load(path()));
    EXPECT_EQ(document->root().text(), u"ü"_s);
    document->save(path());
    ASSERT_TRUE(document->load(path()));
    EXPECT_EQ(document->root().text(), u"ü"_s) << "what was written stands in front of it again";
}

TEST_F(XmlFile, UnreadableFilesAreRefused) {
    const XmlDocumentPtr document = XmlDocument::create();
    EXPECT_FALSE(document->load(m_folder.filePath("missing.xml")));
    EXPECT_FALSE(document->load(m_folder.path()));
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("\0\0\0", 3), QByteArray("<A>\xFF\xFE</A>"), QByteArray("<A>\xC3(</A>"),
          QByteArray("SQLite format 3"), QByteArray("<?xml version=\"1.0\" encoding=\"klingon\"?><A/>"),
          QByteArray("<A>\0</A>", 8), QByteArray("<A><B></A>")}) {
        put(bytes);
        ASSERT_TRUE(document->loadXML("<Before/>"));
        EXPECT_FALSE(document->load(path())) << bytes.toStdString();
        EXPECT_EQ(document->xml(), u""_s);
    }
}

TEST(XmlDocument, DamagedDocumentsNeverCrash) {
    const QByteArray whole = ("<?xml version=\"1.0\"?><!--c-->" + programme).toUtf8();
    const XmlDocumentPtr document = XmlDocument::create();
    for (qsizetype cut = 0; cut < whole.size(); ++cut) {
        EXPECT_FALSE(document->loadXML(QString::fromUtf8(whole.left(cut)))) << cut;
        for (const char mark : {'<', '>', '"', '&', '\0', '/'}) {
            QByteArray damaged = whole;
            damaged[cut] = mark;
            const bool loaded = document->loadXML(QString::fromUtf8(damaged));
            EXPECT_EQ(loaded, !document->xml().isEmpty());
        }
    }
}
