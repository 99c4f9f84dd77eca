<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru">
<context>
    <name>OVApplication</name>
    <message>
        <source>German</source>
        <translation>Немецкий</translation>
    </message>
</context>
</TS>
