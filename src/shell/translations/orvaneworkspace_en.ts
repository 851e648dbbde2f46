<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>FileWords</name>
    <message numerus="yes">
        <source>It is larger than %n megabytes, which no such file is.</source>
        <translation>
            <numerusform>It is larger than %n megabyte, which no such file is.</numerusform>
            <numerusform>It is larger than %n megabytes, which no such file is.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ProjectQuestions</name>
    <message numerus="yes">
        <source>%Ln notes</source>
        <translation>
            <numerusform>%Ln note</numerusform>
            <numerusform>%Ln notes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln words</source>
        <translation>
            <numerusform>%Ln word</numerusform>
            <numerusform>%Ln words</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln words since %1</source>
        <translation>
            <numerusform>%Ln word since %1</numerusform>
            <numerusform>%Ln words since %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln notes are not saved yet</source>
        <translation>
            <numerusform>%Ln note is not saved yet</numerusform>
            <numerusform>%Ln notes are not saved yet</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln notes are not there</source>
        <translation>
            <numerusform>%Ln note is not there</numerusform>
            <numerusform>%Ln notes are not there</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln notes are newer than theirs</source>
        <translation>
            <numerusform>%Ln note is newer than theirs</numerusform>
            <numerusform>%Ln notes are newer than theirs</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln notes are newer than mine</source>
        <translation>
            <numerusform>%Ln note is newer than mine</numerusform>
            <numerusform>%Ln notes are newer than mine</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 in %Ln notes, written since %2, are kept in</source>
        <translation>
            <numerusform>%1 in %Ln note, written since %2, are kept in</numerusform>
            <numerusform>%1 in %Ln notes, written since %2, are kept in</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>VersionRows</name>
    <message numerus="yes">
        <source>%Ln words</source>
        <translation>
            <numerusform>%Ln word</numerusform>
            <numerusform>%Ln words</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::BinderMenus</name>
    <message numerus="yes">
        <source>Delete %n notes for good?</source>
        <translation>
            <numerusform>Delete %n note for good?</numerusform>
            <numerusform>Delete %n notes for good?</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Delete %n folders?</source>
        <translation>
            <numerusform>Delete %n folder?</numerusform>
            <numerusform>Delete %n folders?</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The folders of %n notes are gone. The notes are at the top level of the project.</source>
        <translation>
            <numerusform>The folder of %n note is gone. The note is at the top level of the project.</numerusform>
            <numerusform>The folders of %n notes are gone. The notes are at the top level of the project.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln notes leave the project. A copy of each as rich text goes to the desktop&apos;s trash.</source>
        <translation>
            <numerusform>%Ln note leaves the project. A copy of each as rich text goes to the desktop&apos;s trash.</numerusform>
            <numerusform>%Ln notes leave the project. A copy of each as rich text goes to the desktop&apos;s trash.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::BinderModel</name>
    <message numerus="yes">
        <source>%1, folder, %Ln notes</source>
        <translation>
            <numerusform>%1, folder, %Ln note</numerusform>
            <numerusform>%1, folder, %Ln notes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::BinderView</name>
    <message numerus="yes">
        <source>%n selected</source>
        <translation>
            <numerusform>%n selected</numerusform>
            <numerusform>%n selected</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::BothStoresSheet</name>
    <message numerus="yes">
        <source>%Ln notes are not the same on both sides.</source>
        <translation>
            <numerusform>%Ln note is not the same on both sides.</numerusform>
            <numerusform>%Ln notes are not the same on both sides.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln words, changed %1</source>
        <translation>
            <numerusform>%Ln word, changed %1</numerusform>
            <numerusform>%Ln words, changed %1</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::InspectorView</name>
    <message numerus="yes">
        <source>%n Selected</source>
        <translation>
            <numerusform>%n Selected</numerusform>
            <numerusform>%n Selected</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::MoveToSheet</name>
    <message numerus="yes">
        <source>Move %n notes to…</source>
        <translation>
            <numerusform>Move %n note to…</numerusform>
            <numerusform>Move %n notes to…</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Move %n folders to…</source>
        <translation>
            <numerusform>Move %n folder to…</numerusform>
            <numerusform>Move %n folders to…</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Move %n rows to…</source>
        <translation>
            <numerusform>Move %n row to…</numerusform>
            <numerusform>Move %n rows to…</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::PasteStrip</name>
    <message numerus="yes">
        <source>%Ln footnotes</source>
        <translation>
            <numerusform>%Ln footnote</numerusform>
            <numerusform>%Ln footnotes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln comments</source>
        <translation>
            <numerusform>%Ln comment</numerusform>
            <numerusform>%Ln comments</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln text boxes</source>
        <translation>
            <numerusform>%Ln text box</numerusform>
            <numerusform>%Ln text boxes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln pictures</source>
        <translation>
            <numerusform>%Ln picture</numerusform>
            <numerusform>%Ln pictures</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln headers and footers</source>
        <translation>
            <numerusform>%Ln header or footer</numerusform>
            <numerusform>%Ln headers and footers</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln embedded objects</source>
        <translation>
            <numerusform>%Ln embedded object</numerusform>
            <numerusform>%Ln embedded objects</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::ProjectTilesModel</name>
    <message numerus="yes">
        <source>%Ln notes</source>
        <translation>
            <numerusform>%Ln note</numerusform>
            <numerusform>%Ln notes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln words</source>
        <translation>
            <numerusform>%Ln word</numerusform>
            <numerusform>%Ln words</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::ProjectTroubleSheets</name>
    <message numerus="yes">
        <source>%Ln notes can&apos;t be read while their disk is gone, and are not in it.</source>
        <translation>
            <numerusform>%Ln note can&apos;t be read while its disk is gone, and is not in it.</numerusform>
            <numerusform>%Ln notes can&apos;t be read while their disk is gone, and are not in it.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::ProjectsBrowserView</name>
    <message numerus="yes">
        <source>%1, %Ln not there</source>
        <comment>projects, of which</comment>
        <translation>
            <numerusform>%1, %Ln not there</numerusform>
            <numerusform>%1, %Ln not there</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::RequestOpener</name>
    <message numerus="yes">
        <source>“%1” is left out: together the files are larger than %n megabytes. Open it by itself.</source>
        <translation>
            <numerusform>“%1” is left out: together the files are larger than %n megabyte. Open it by itself.</numerusform>
            <numerusform>“%1” is left out: together the files are larger than %n megabytes. Open it by itself.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::TableSection</name>
    <message numerus="yes">
        <source>%Ln cells</source>
        <translation>
            <numerusform>%Ln cell</numerusform>
            <numerusform>%Ln cells</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::TagsSection</name>
    <message numerus="yes">
        <source>%n more</source>
        <translation>
            <numerusform>%n more</numerusform>
            <numerusform>%n more</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::VersionHistorySection</name>
    <message numerus="yes">
        <source>%Ln snapshots</source>
        <translation>
            <numerusform>%Ln snapshot</numerusform>
            <numerusform>%Ln snapshots</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::VersionPreviewSheet</name>
    <message numerus="yes">
        <source>%Ln words</source>
        <translation>
            <numerusform>%Ln word</numerusform>
            <numerusform>%Ln words</numerusform>
        </translation>
    </message>
</context>
</TS>
