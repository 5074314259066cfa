<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>Bench</name>
    <message>
        <source>Dry run: on copies, of which nothing stays.</source>
        <translation>试运行：只在副本上进行，不留下任何改动。</translation>
    </message>
    <message>
        <source>There is no window (%1); leave --window out.</source>
        <translation>无法打开窗口（%1）；请去掉 --window。</translation>
    </message>
    <message>
        <source>There is no screen for the window: set DISPLAY, WAYLAND_DISPLAY or QT_QPA_PLATFORM to one that can be reached, or leave --window out.</source>
        <translation>没有可显示窗口的屏幕：请将 DISPLAY、WAYLAND_DISPLAY 或 QT_QPA_PLATFORM 设为可用的屏幕，或去掉 --window。</translation>
    </message>
</context>
<context>
    <name>DryRun</name>
    <message>
        <source>%1 cannot be written to: what a unit takes stays in its pools, and the next one takes it again.</source>
        <translation>%1 无法写入：车机取走的值仍留在池中，下一台会再次取到。</translation>
    </message>
    <message>
        <source>%1 has no room for the rewrite: what a unit takes stays in its pools, and the next one takes it again.</source>
        <translation>%1 没有改写文件所需的空间：车机取走的值仍留在池中，下一台会再次取到。</translation>
    </message>
    <message>
        <source>%1 cannot be copied for the dry run; see that its files can be read and that %2 has room.</source>
        <translation>无法为试运行复制 %1；请确认其中的文件可以读取，且 %2 有足够空间。</translation>
    </message>
</context>
<context>
    <name>Flash</name>
    <message>
        <source>The folder %1 cannot stand for the unit&apos;s flash: %2: %3. This takes root, or a kernel that lets users have namespaces of their own.</source>
        <translation>文件夹 %1 不能用作车机的闪存：%2：%3。这需要 root 权限，或允许普通用户建立命名空间的内核。</translation>
    </message>
</context>
<context>
    <name>HeadUnit</name>
    <message>
        <source>The stick %1 is not a folder; name one that exists.</source>
        <translation>U盘 %1 不是文件夹；请指定一个已存在的文件夹。</translation>
    </message>
    <message>
        <source>The stick %1 is plugged already.</source>
        <translation>U盘 %1 已经插入。</translation>
    </message>
    <message>
        <source>The stick %1 is not plugged.</source>
        <translation>U盘 %1 没有插入。</translation>
    </message>
</context>
<context>
    <name>Journal</name>
    <message>
        <source>The journal %1 cannot be written: %2; name a file that can be.</source>
        <translation>无法写入日志文件 %1：%2；请指定一个可写的文件。</translation>
    </message>
</context>
<context>
    <name>Options</name>
    <message>
        <source>The unit&apos;s data; created when missing. Without it, a new unit that is thrown away.</source>
        <translation>车机数据所在的文件夹，不存在时自动创建。不指定时使用一台用完即弃的新车机。</translation>
    </message>
    <message>
        <source>A folder that stands for a mounted USB storage device. May be repeated; the order is the order reported.</source>
        <translation>代表一个已挂载的USB存储设备的文件夹。可重复使用，上报顺序与给出的顺序相同。</translation>
    </message>
    <message>
        <source>A folder that stands for the unit&apos;s flash, /media/flash/userdata. Takes root, or a kernel that lets users have namespaces of their own.</source>
        <translation>代表车机闪存 /media/flash/userdata 的文件夹。需要 root 权限，或允许普通用户建立命名空间的内核。</translation>
    </message>
    <message>
        <source>Unplug the stick of the pass when the pass is over and every message has been shown. A pass over the flash file, which no stick ends, is ended as by &apos;quit&apos;.</source>
        <translation>本轮生产结束且所有消息都已显示后，拔出所用的U盘。使用闪存文件的一轮生产不会因拔U盘而结束，按输入 &apos;quit&apos; 处理。</translation>
    </message>
    <message>
        <source>Preset the unit&apos;s data, as text; AREA is Factory, Runtime, Production or User. May be repeated.</source>
        <translation>以文本形式预设车机数据；AREA 为 Factory、Runtime、Production 或 User。可重复使用。</translation>
    </message>
    <message>
        <source>The panel&apos;s size in inches that the unit tells the module.</source>
        <translation>车机告知模块的屏幕尺寸（英寸）。</translation>
    </message>
    <message>
        <source>The highest backlight step, 0 to 255: a step table holds one value more. Default: 10.</source>
        <translation>最高背光级别，0 到 255：背光级别表的值比它多一个。默认为 10。</translation>
    </message>
    <message>
        <source>The head unit&apos;s model. Default: 0.</source>
        <translation>车机的型号。默认为 0。</translation>
    </message>
    <message>
        <source>Leave out the &quot;canbus&quot; or the &quot;mcu&quot; module. May be repeated.</source>
        <translation>不加载 &quot;canbus&quot; 或 &quot;mcu&quot; 模块。可重复使用。</translation>
    </message>
    <message>
        <source>Device events are requested only after all modules have started.</source>
        <translation>在所有模块启动之后才请求设备事件。</translation>
    </message>
    <message>
        <source>Append one line of JSON for every call of the module on the platform, in order.</source>
        <translation>模块对平台的每次调用都按顺序追加一行 JSON。</translation>
    </message>
    <message>
        <source>Show the module&apos;s log on standard error too.</source>
        <translation>同时在标准错误输出上显示模块的日志。</translation>
    </message>
    <message>
        <source>Show this help.</source>
        <translation>显示本帮助。</translation>
    </message>
    <message>
        <source>Show the version.</source>
        <translation>显示版本。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not an option.</source>
        <translation>&quot;%1&quot; 不是选项。</translation>
    </message>
    <message>
        <source>%1 takes a whole number from %2 to %3, not &quot;%4&quot;.</source>
        <translation>%1 需要 %2 到 %3 之间的整数，而不是 &quot;%4&quot;。</translation>
    </message>
    <message>
        <source>--set takes AREA/KEY=VALUE with the area Factory, Runtime, Production or User, not &quot;%1&quot;.</source>
        <translation>--set 需要 AREA/KEY=VALUE，其中 AREA 为 Factory、Runtime、Production 或 User，而不是 &quot;%1&quot;。</translation>
    </message>
    <message>
        <source>--without takes &quot;canbus&quot; or &quot;mcu&quot;, not &quot;%1&quot;.</source>
        <translation>--without 需要 &quot;canbus&quot; 或 &quot;mcu&quot;，而不是 &quot;%1&quot;。</translation>
    </message>
    <message>
        <source>%1: %2 is not a folder; name one that exists.</source>
        <translation>%1：%2 不是文件夹；请指定一个已存在的文件夹。</translation>
    </message>
    <message>
        <source>%1: %2 is named twice.</source>
        <translation>%1：%2 被指定了两次。</translation>
    </message>
    <message>
        <source>%1 takes the name of a folder.</source>
        <translation>%1 需要一个文件夹名。</translation>
    </message>
    <message>
        <source>%1: &quot;%2&quot; cannot be a file; name one in a folder that exists.</source>
        <translation>%1：&quot;%2&quot; 不能作为文件；请指定一个已存在的文件夹中的文件。</translation>
    </message>
    <message>
        <source>Runs the production module on a stand-in head unit and shows what the operator sees.</source>
        <translation>在模拟的车机上运行生产模块，并显示操作员看到的内容。</translation>
    </message>
    <message>
        <source>production-bench --help tells the options.</source>
        <translation>各选项的说明见 production-bench --help。</translation>
    </message>
    <message>
        <source>Show the unit in a window, where one unit after another can be tried; --unit then names the folder in which each gets a numbered one.</source>
        <translation>在窗口中显示车机，可以一台接一台地试用；此时 --unit 指定的文件夹中，每台车机各有一个带编号的文件夹。</translation>
    </message>
    <message>
        <source>Every mount point beneath DIR is a USB storage device, as it comes and goes; may be repeated. Without DIR: where the desktop mounts removable media, /media/$USER and /run/media/$USER. The unit is switched on once there is a stick.</source>
        <translation>DIR 下的每个挂载点都是一个USB存储设备，随其出现和消失而插入和拔出；可重复使用。不给出 DIR 时为桌面挂载可移动介质的位置：/media/$USER 和 /run/media/$USER。有U盘后车机才开机。</translation>
    </message>
    <message>
        <source>One unit after another, each when the next stick is plugged; --unit then names the folder in which each gets a numbered one. With --unplug-when-done the same sticks go on to the next unit at once, until a pool is used up, a pass takes no serial or the operator is told of trouble.</source>
        <translation>一台接一台地生产，插入下一个U盘时换下一台；此时 --unit 指定的文件夹中，每台车机各有一个带编号的文件夹。与 --unplug-when-done 一起使用时，同样的U盘立即用于下一台，直到某个池用完、某轮没有取用序列号，或向操作员报告了问题为止。</translation>
    </message>
    <message>
        <source>--loop is for the terminal; the window has a button for the next unit.</source>
        <translation>--loop 用于终端；窗口中有切换到下一台车机的按钮。</translation>
    </message>
    <message>
        <source>There is no production file on %1; put one there, named %2.</source>
        <translation>%1 上没有生产文件；请放入一个，文件名为 %2。</translation>
    </message>
    <message>
        <source>Run one pass on copies of the unit, the sticks and the flash, and report what would have happened; nothing of it stays. Standard input is not read.</source>
        <translation>在主机、U盘和闪存的副本上运行一次，并报告会发生什么；不留下任何改动。不读取标准输入。</translation>
    </message>
    <message>
        <source>--dry-run runs one pass on the sticks that are named.</source>
        <translation>--dry-run 只在指定的U盘上运行一次。</translation>
    </message>
    <message>
        <source>Give up after that long; of several units, each and each wait for a stick counts. Not with --window.</source>
        <translation>超过该秒数即放弃；有多台车机时，每台以及每次等待U盘分别计时。不能与 --window 同用。</translation>
    </message>
    <message>
        <source>Without --window, lines on standard input act while it runs; their end changes
nothing:
  plug DIR, unplug DIR     a stick comes or goes
  canbus, mcu              the module sees data on its interface
  quit                     the application ends, and the module with it

Exit codes:
  0  the module has ended: after the unplugging, by itself, with nothing to do, or
     by &apos;quit&apos;
  1  wrong usage, or a unit directory, stick, flash folder or journal that cannot be
     used, or no production file on any of the sticks; nothing has been run
  3  timed out
</source>
        <translation>不带 --window 时，运行中可在标准输入上输入以下各行；输入结束没有任何影响：
  plug DIR, unplug DIR     插入或拔出U盘
  canbus, mcu              模块在其接口上收到数据
  quit                     应用程序结束，模块随之结束

退出码：
  0  模块已结束：拔出U盘之后、自行结束、无事可做，或输入了 &apos;quit&apos;
  1  用法错误，或者车机文件夹、U盘、闪存文件夹、日志文件无法使用，
     或所有U盘上都没有生产文件；没有运行任何内容
  3  超时
</translation>
    </message>
    <message>
        <source>--timeout is for the terminal; a window stays until it is closed.</source>
        <translation>--timeout 用于终端；窗口会一直打开，直到被关闭。</translation>
    </message>
</context>
<context>
    <name>Popups</name>
    <message>
        <source>head unit</source>
        <translation>车机</translation>
    </message>
    <message>
        <source>production mode</source>
        <translation>生产模式</translation>
    </message>
    <message>
        <source>nothing to do</source>
        <translation>无事可做</translation>
    </message>
    <message>
        <source>serial number stored</source>
        <translation>序列号已写入</translation>
    </message>
    <message>
        <source>serial number replaced</source>
        <translation>序列号已替换</translation>
    </message>
    <message>
        <source>serial number kept</source>
        <translation>保留原序列号</translation>
    </message>
    <message>
        <source>taking a serial number</source>
        <translation>正在取序列号</translation>
    </message>
    <message>
        <source>no serial number available</source>
        <translation>没有可用的序列号</translation>
    </message>
    <message>
        <source>SK value stored</source>
        <translation>SK值已写入</translation>
    </message>
    <message>
        <source>SK value replaced</source>
        <translation>SK值已替换</translation>
    </message>
    <message>
        <source>SK value kept</source>
        <translation>保留原SK值</translation>
    </message>
    <message>
        <source>taking an SK value</source>
        <translation>正在取SK值</translation>
    </message>
    <message>
        <source>no SK value available</source>
        <translation>没有可用的SK值</translation>
    </message>
    <message>
        <source>panel set</source>
        <translation>屏幕已设置</translation>
    </message>
    <message>
        <source>Bluetooth power set</source>
        <translation>蓝牙功率已设置</translation>
    </message>
    <message>
        <source>message</source>
        <translation>消息</translation>
    </message>
</context>
<context>
    <name>Terminal</name>
    <message>
        <source>on</source>
        <translation>开</translation>
    </message>
    <message>
        <source>off</source>
        <translation>关</translation>
    </message>
    <message numerus="yes">
        <source>%n setting(s)</source>
        <translation>
            <numerusform>%n 项设置</numerusform>
        </translation>
    </message>
    <message>
        <source>store</source>
        <translation>存储</translation>
    </message>
    <message>
        <source>screen</source>
        <translation>屏幕</translation>
    </message>
    <message>
        <source>day level %1</source>
        <translation>白天亮度 %1</translation>
    </message>
    <message>
        <source>night level %1</source>
        <translation>夜间亮度 %1</translation>
    </message>
    <message>
        <source>light restored with the new step table</source>
        <translation>已按新的背光级别表恢复亮度</translation>
    </message>
    <message>
        <source>test</source>
        <translation>测试</translation>
    </message>
    <message>
        <source>CAN bus %1, index %2</source>
        <translation>CAN总线%1，索引 %2</translation>
    </message>
    <message>
        <source>direction keys %1</source>
        <translation>方向按键%1</translation>
    </message>
    <message>
        <source>stick</source>
        <translation>U盘</translation>
    </message>
    <message>
        <source>plugged %1</source>
        <translation>已插入 %1</translation>
    </message>
    <message>
        <source>unplugged %1</source>
        <translation>已拔出 %1</translation>
    </message>
    <message>
        <source>module</source>
        <translation>模块</translation>
    </message>
    <message>
        <source>ended</source>
        <translation>已结束</translation>
    </message>
    <message>
        <source>pop-up</source>
        <translation>弹窗</translation>
    </message>
    <message>
        <source>  (%1 times)</source>
        <translation>  （%1 次）</translation>
    </message>
    <message>
        <source>command</source>
        <translation>命令</translation>
    </message>
    <message>
        <source>pass</source>
        <translation>生产</translation>
    </message>
    <message>
        <source>no configuration file on any stick</source>
        <translation>所有U盘上都没有配置文件</translation>
    </message>
    <message>
        <source>The pass over %1</source>
        <translation>本轮生产：%1</translation>
    </message>
    <message>
        <source>nothing taken</source>
        <translation>未取用</translation>
    </message>
    <message>
        <source>taken: %1</source>
        <translation>取用：%1</translation>
    </message>
    <message>
        <source>%1 pool</source>
        <translation>%1 池</translation>
    </message>
    <message>
        <source>%1 before, %2 after; %3</source>
        <translation>之前 %1 个，之后 %2 个；%3</translation>
    </message>
    <message>
        <source>file</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>gone</source>
        <translation>已不存在</translation>
    </message>
    <message>
        <source>marker</source>
        <translation>完成记录</translation>
    </message>
    <message>
        <source>no new line; the last one: %1</source>
        <translation>没有新的一行；最后一行：%1</translation>
    </message>
    <message>
        <source>unit</source>
        <translation>车机</translation>
    </message>
    <message>
        <source>nothing stored</source>
        <translation>没有存储任何内容</translation>
    </message>
    <message>
        <source>data seen by %1</source>
        <translation>%1 收到数据</translation>
    </message>
    <message>
        <source>in order</source>
        <translation>正常</translation>
    </message>
    <message>
        <source>NOT in order: %1</source>
        <translation>不正常：%1</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>stored</source>
        <translation>已存储</translation>
    </message>
    <message numerus="yes">
        <source>%n value(s)</source>
        <translation>
            <numerusform>%n 个值</numerusform>
        </translation>
    </message>
    <message>
        <source>told</source>
        <translation>已告知</translation>
    </message>
    <message>
        <source>serials</source>
        <translation>序列号</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>left</source>
        <translation>剩余</translation>
    </message>
    <message>
        <source>--- %1 ---</source>
        <translation>--- %1 ---</translation>
    </message>
</context>
<context>
    <name>UnitData</name>
    <message>
        <source>The unit directory %1 cannot be created; name a folder that can.</source>
        <translation>无法创建车机文件夹 %1；请指定可以创建的文件夹。</translation>
    </message>
    <message>
        <source>The unit directory %1 is in use by another bench; end that one or name another directory.</source>
        <translation>车机文件夹 %1 正被另一个 production-bench 使用；请结束它，或指定另一个文件夹。</translation>
    </message>
    <message>
        <source>%1:%2: not a line of a unit&apos;s data (mend it, or remove the file for a new unit): %3</source>
        <translation>%1:%2：不是车机数据的行（请修正，或删除该文件以使用新车机）：%3</translation>
    </message>
    <message>
        <source>The unit&apos;s data %1 cannot be written: %2; make room and see to the rights, or name another unit directory.</source>
        <translation>无法写入车机数据 %1：%2；请检查空间和权限，或指定另一个车机文件夹。</translation>
    </message>
    <message>
        <source>The unit&apos;s data %1 cannot be read: %2; see to the rights, or name another unit directory.</source>
        <translation>无法读取车机数据 %1：%2；请检查权限，或指定另一个车机文件夹。</translation>
    </message>
    <message>
        <source>The unit directory %1 cannot be opened: %2; see to the rights, or name another.</source>
        <translation>无法打开车机文件夹 %1：%2；请检查权限，或指定另一个文件夹。</translation>
    </message>
</context>
<context>
    <name>Verdict</name>
    <message>
        <source>nothing to do, no stick was plugged</source>
        <translation>无事可做，没有插入U盘</translation>
    </message>
    <message>
        <source>no production file on any stick; put one there, named %1</source>
        <translation>所有U盘上都没有生产文件；请放入一个，文件名为 %1</translation>
    </message>
    <message>
        <source>the stick was pulled before the pass was over</source>
        <translation>本轮生产结束前U盘被拔出</translation>
    </message>
    <message>
        <source>%1 still in the pool, for the next unit to take again: the file could not be rewritten</source>
        <translation>%1 仍在号池中，下一台车机会再次取用：文件无法改写</translation>
    </message>
    <message>
        <source>No further unit: %1.</source>
        <translation>不再继续下一台车机：%1。</translation>
    </message>
    <message>
        <source>No further unit: the pass took no serial.</source>
        <translation>不再继续下一台车机：本次没有取用序列号。</translation>
    </message>
    <message>
        <source>The sticks have no serial for one more unit.</source>
        <translation>U盘上没有可供下一台车机使用的序列号。</translation>
    </message>
</context>
<context>
    <name>bench::BacklightCurve</name>
    <message>
        <source>Backlight step table</source>
        <translation>背光级别表</translation>
    </message>
    <message numerus="yes">
        <source>%n step(s): %1</source>
        <translation>
            <numerusform>%n 级：%1</numerusform>
        </translation>
    </message>
    <message>
        <source>day</source>
        <translation>白天</translation>
    </message>
    <message>
        <source>night</source>
        <translation>夜间</translation>
    </message>
    <message>
        <source>steps from the file</source>
        <translation>文件中的亮度级</translation>
    </message>
    <message>
        <source>default steps</source>
        <translation>默认亮度级</translation>
    </message>
</context>
<context>
    <name>bench::BacklightPanel</name>
    <message>
        <source>Backlight</source>
        <translation>背光</translation>
    </message>
    <message>
        <source>&amp;Day</source>
        <translation>白天(&amp;D)</translation>
    </message>
    <message>
        <source>N&amp;ight</source>
        <translation>夜间(&amp;I)</translation>
    </message>
</context>
<context>
    <name>bench::Line</name>
    <message>
        <source>A unit that is thrown away finds no place: %1; name a unit directory.</source>
        <translation>无处存放临时车机：%1；请指定车机文件夹。</translation>
    </message>
</context>
<context>
    <name>bench::MainWindow</name>
    <message>
        <source>Production bench</source>
        <translation>生产模拟台</translation>
    </message>
    <message>
        <source>Stored on the unit</source>
        <translation>车机已存储的数据</translation>
    </message>
    <message>
        <source>Pop-ups</source>
        <translation>弹窗</translation>
    </message>
    <message>
        <source>&amp;Start unit</source>
        <translation>启动车机(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Next unit</source>
        <translation>下一台车机(&amp;N)</translation>
    </message>
    <message>
        <source>Not there</source>
        <translation>没有车机</translation>
    </message>
    <message>
        <source>Switched off</source>
        <translation>已关机</translation>
    </message>
    <message>
        <source>In production: leave the stick where it is</source>
        <translation>正在生产：请不要拔出U盘</translation>
    </message>
    <message>
        <source>Production done: unplug the stick, or go on to the next unit</source>
        <translation>生产完成：请拔出U盘，或继续下一台车机</translation>
    </message>
    <message>
        <source>Production mode has ended</source>
        <translation>生产模式已结束</translation>
    </message>
    <message>
        <source>In order</source>
        <translation>正常</translation>
    </message>
</context>
<context>
    <name>bench::MountWatcher</name>
    <message>
        <source>The mount table %1 cannot be watched: %2; name the sticks with --stick instead of --media.</source>
        <translation>无法监视挂载表 %1：%2；请用 --stick 指定U盘，不要用 --media。</translation>
    </message>
</context>
<context>
    <name>bench::PopupHistory</name>
    <message>
        <source>Pop-ups</source>
        <translation>弹窗</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>代码</translation>
    </message>
    <message>
        <source>Meaning</source>
        <translation>含义</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文本</translation>
    </message>
</context>
<context>
    <name>bench::ScreenView</name>
    <message>
        <source>There is no unit.</source>
        <translation>没有车机。</translation>
    </message>
    <message>
        <source>Switched off. Plug a stick, then start the unit: it looks for sticks while it starts.</source>
        <translation>已关机。请先插入U盘，再启动车机：车机在启动时查找U盘。</translation>
    </message>
    <message>
        <source>Starting</source>
        <translation>正在启动</translation>
    </message>
    <message>
        <source>A silent pass is over: its file shows the operator nothing.</source>
        <translation>静默生产已结束：其文件不向操作员显示任何内容。</translation>
    </message>
    <message>
        <source>Production mode has ended without a word.</source>
        <translation>生产模式已结束，没有任何提示。</translation>
    </message>
    <message>
        <source>No stick with a configuration file: the unit runs normally.</source>
        <translation>没有带配置文件的U盘：车机正常运行。</translation>
    </message>
    <message>
        <source>Head unit&apos;s screen</source>
        <translation>车机屏幕</translation>
    </message>
</context>
<context>
    <name>bench::Session</name>
    <message numerus="yes">
        <source>Timed out after %n second(s).</source>
        <translation>
            <numerusform>%n 秒后超时。</numerusform>
        </translation>
    </message>
    <message>
        <source>The pass does not return; it is abandoned.</source>
        <translation>本轮生产没有返回，已放弃。</translation>
    </message>
    <message>
        <source>Known lines: plug DIR, unplug DIR, canbus, mcu, quit.</source>
        <translation>可用的输入行：plug DIR、unplug DIR、canbus、mcu、quit。</translation>
    </message>
    <message>
        <source>There is no module &quot;%1&quot;; known lines: plug DIR, unplug DIR, canbus, mcu, quit.</source>
        <translation>没有模块 &quot;%1&quot;；可用的输入行：plug DIR、unplug DIR、canbus、mcu、quit。</translation>
    </message>
</context>
<context>
    <name>bench::StickPanel</name>
    <message>
        <source>Sticks</source>
        <translation>U盘</translation>
    </message>
    <message>
        <source>&amp;Add stick…</source>
        <translation>添加U盘(&amp;A)…</translation>
    </message>
    <message>
        <source>Add a stick</source>
        <translation>添加U盘</translation>
    </message>
    <message>
        <source>A folder dropped here is a stick.</source>
        <translation>把文件夹拖到这里，即作为U盘。</translation>
    </message>
</context>
<context>
    <name>bench::StickRow</name>
    <message numerus="yes">
        <source>%1: %n left</source>
        <translation>
            <numerusform>%1：剩余 %n 个</numerusform>
        </translation>
    </message>
    <message>
        <source>%1: none left</source>
        <translation>%1：已用完</translation>
    </message>
    <message>
        <source>no configuration file</source>
        <translation>没有配置文件</translation>
    </message>
    <message>
        <source>&amp;Unplug</source>
        <translation>拔出(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Plug</source>
        <translation>插入(&amp;P)</translation>
    </message>
    <message>
        <source>Unplug %1</source>
        <translation>拔出 %1</translation>
    </message>
    <message>
        <source>Plug %1</source>
        <translation>插入 %1</translation>
    </message>
</context>
<context>
    <name>bench::StoredView</name>
    <message>
        <source>new</source>
        <translation>新增</translation>
    </message>
    <message>
        <source>was %1</source>
        <translation>原为 %1</translation>
    </message>
    <message>
        <source>stored again</source>
        <translation>再次存储</translation>
    </message>
    <message>
        <source>Factory data</source>
        <translation>工厂数据</translation>
    </message>
    <message>
        <source>Runtime data</source>
        <translation>运行数据</translation>
    </message>
    <message>
        <source>Production data</source>
        <translation>生产数据</translation>
    </message>
    <message>
        <source>User data</source>
        <translation>用户数据</translation>
    </message>
    <message>
        <source>Stored on the unit</source>
        <translation>车机已存储的数据</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>键</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>值</translation>
    </message>
    <message>
        <source>This pass</source>
        <translation>本轮</translation>
    </message>
</context>
<context>
    <name>bench::TerminalRun</name>
    <message>
        <source>Now: unplug DIR, plug DIR, canbus, mcu, quit</source>
        <translation>现在可以输入：unplug DIR、plug DIR、canbus、mcu、quit</translation>
    </message>
    <message>
        <source>Waiting for the next stick: plug DIR, or quit</source>
        <translation>等待下一个U盘：plug DIR，或 quit</translation>
    </message>
    <message>
        <source>Waiting for the next stick beneath %1: mount it, plug DIR, or quit</source>
        <translation>等待 %1 下的下一个U盘：请挂载，或输入 plug DIR 或 quit</translation>
    </message>
    <message numerus="yes">
        <source>No stick has come within %n second(s).</source>
        <translation>
            <numerusform>%n 秒内没有插入U盘。</numerusform>
        </translation>
    </message>
    <message>
        <source>The unit</source>
        <translation>车机</translation>
    </message>
</context>
<context>
    <name>bench::TestPanel</name>
    <message>
        <source>Not in this unit</source>
        <translation>此车机没有</translation>
    </message>
    <message>
        <source>Data seen</source>
        <translation>已收到数据</translation>
    </message>
    <message>
        <source>Waiting for data</source>
        <translation>等待数据</translation>
    </message>
    <message>
        <source>Test mode is off</source>
        <translation>测试模式已关闭</translation>
    </message>
    <message>
        <source>Interface tests</source>
        <translation>接口测试</translation>
    </message>
    <message>
        <source>CAN bus</source>
        <translation>CAN总线</translation>
    </message>
    <message>
        <source>&amp;CAN data seen</source>
        <translation>CAN收到数据(&amp;C)</translation>
    </message>
    <message>
        <source>Direction keys</source>
        <translation>方向按键</translation>
    </message>
    <message>
        <source>&amp;Key data seen</source>
        <translation>按键收到数据(&amp;K)</translation>
    </message>
    <message>
        <source>CAN bus, index %1</source>
        <translation>CAN总线，索引 %1</translation>
    </message>
</context>
</TS>
