<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>ProductionControl</name>
    <message>
        <source>It is detected that there is communication on the interface, and the test is passed.</source>
        <translation>检测到接口有通信，测试通过。</translation>
    </message>
    <message>
        <source>The USB is unplugged, it has exited production mode.</source>
        <translation>USB已拔出，已退出生产模式。</translation>
    </message>
</context>
</TS>
