<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>pba_host</name>
    <message><source>Starting Windows</source><translation>Start ü</translation></message>
    <message numerus="yes"><source>%n tries</source><translation>
        <numerusform>ein Versuch</numerusform><numerusform>%n Versuche</numerusform>
    </translation></message>
</context>
<context>
    <name>PbaMainWindow</name>
    <message><source>Starting Windows</source><translation>Start ü</translation></message>
</context>
</TS>
