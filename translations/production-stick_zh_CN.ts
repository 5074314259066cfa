<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>ProductionStick</name>
    <message>
        <source>a system file: the unit shows no message, deletes the file after its pass and writes no completion line</source>
        <translation>系统文件：车机不显示任何消息，生产后删除该文件，也不写完成记录</translation>
    </message>
    <message>
        <source>error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>note</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>next %1</source>
        <comment>pool entry</comment>
        <translation>下一个 %1</translation>
    </message>
    <message>
        <source>none for the next unit</source>
        <comment>pool entry</comment>
        <translation>没有可供下一台车机使用的条目</translation>
    </message>
    <message>
        <source>%1 %2 of %3 usable, %4</source>
        <translation>%1 可用 %2 个，共 %3 个，%4</translation>
    </message>
    <message>
        <source>nothing to report</source>
        <translation>没有问题</translation>
    </message>
    <message numerus="yes">
        <source>%n error(s)</source>
        <translation>
            <numerusform>%n 个错误</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n warning(s)</source>
        <translation>
            <numerusform>%n 个警告</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n note(s)</source>
        <translation>
            <numerusform>%n 条提示</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>(%n not shown; --limit 0 shows all)</source>
        <translation>
            <numerusform>（%n 条未显示；--limit 0 显示全部）</numerusform>
        </translation>
    </message>
    <message>
        <source>checking %1</source>
        <translation>正在检查 %1</translation>
    </message>
    <message numerus="yes">
        <source>a list of %n values</source>
        <translation>
            <numerusform>%n 个值的列表</numerusform>
        </translation>
    </message>
    <message>
        <source>a key without &quot;=&quot;</source>
        <translation>没有 &quot;=&quot; 的键</translation>
    </message>
    <message>
        <source>the group is off</source>
        <translation>该组已关闭</translation>
    </message>
    <message>
        <source>the unit does not apply it</source>
        <translation>车机不会应用它</translation>
    </message>
    <message>
        <source>the unit uses %1</source>
        <translation>车机使用 %1</translation>
    </message>
    <message>
        <source>any length will do</source>
        <translation>任意长度均可</translation>
    </message>
    <message>
        <source>the unit uses 0</source>
        <translation>车机使用 0</translation>
    </message>
    <message>
        <source>is not within 0 to 255: the unit uses %1</source>
        <translation>不在 0 到 255 之间：车机使用 %1</translation>
    </message>
    <message>
        <source>is not above 0: the unit does not apply it</source>
        <translation>不大于 0：车机不会应用它</translation>
    </message>
    <message>
        <source>is not above 0: the unit uses %1</source>
        <translation>不大于 0：车机使用 %1</translation>
    </message>
    <message>
        <source>is below 0: any length will do</source>
        <translation>小于 0：任意长度均可</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: %2 is no whole number: %3</source>
        <translation>&quot;%1&quot;：%2 不是整数：%3</translation>
    </message>
    <message>
        <source>step %1, &quot;%2&quot;, is no whole number: the unit uses 0</source>
        <translation>第 %1 级 &quot;%2&quot; 不是整数：车机使用 0</translation>
    </message>
    <message>
        <source>step %1, %2, is not within 0 to 255: the unit uses %3</source>
        <translation>第 %1 级 %2 不在 0 到 255 之间：车机使用 %3</translation>
    </message>
    <message numerus="yes">
        <source>the unit takes a table of exactly %n step(s)</source>
        <translation>
            <numerusform>车机只接受正好 %n 级的表</numerusform>
        </translation>
    </message>
    <message>
        <source>a list stands without quotes, and of at least two steps</source>
        <translation>列表不能加引号，且至少有两级</translation>
    </message>
    <message>
        <source>no unit takes more than %1</source>
        <translation>任何车机都不接受超过 %1 级</translation>
    </message>
    <message numerus="yes">
        <source>%n step(s): the unit ignores the table (%1)</source>
        <translation>
            <numerusform>%n 级：车机忽略该表（%1）</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a list, as its commas stand outside of quotes: the unit reads an empty text</source>
        <translation>&quot;%1&quot; 的逗号在引号之外，因此是列表：车机读到空文本</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands without &quot;=&quot;: the unit reads the text &quot;%2&quot;</source>
        <translation>&quot;%1&quot; 没有 &quot;=&quot;：车机读到文本 &quot;%2&quot;</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is empty: the unit does as if it had none</source>
        <translation>&quot;%1&quot; 为空：车机按没有该键处理</translation>
    </message>
    <message>
        <source>several prefixes without quotes around them all: no prefix is in force, and no &quot;%1&quot; either</source>
        <translation>多个前缀没有整体加引号：前缀不生效，&quot;%1&quot; 也不生效</translation>
    </message>
    <message>
        <source>it names no display size in parentheses</source>
        <translation>括号中没有屏幕尺寸</translation>
    </message>
    <message>
        <source>no display size reads &quot;%1&quot;</source>
        <translation>没有 &quot;%1&quot; 这样的屏幕尺寸</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is there and wins</source>
        <translation>有 &quot;%1&quot;，以它为准</translation>
    </message>
    <message>
        <source>the file&apos;s own &quot;%1&quot; is &quot;%2&quot;</source>
        <translation>文件自身的 &quot;%1&quot; 是 &quot;%2&quot;</translation>
    </message>
    <message>
        <source>the unit never uses &quot;%1&quot;: %2</source>
        <translation>车机从不使用 &quot;%1&quot;：%2</translation>
    </message>
    <message>
        <source>the unit takes &quot;%1&quot; for a setting like any other; is &quot;%2&quot; meant?</source>
        <translation>车机把 &quot;%1&quot; 当作普通设置；是否应为 &quot;%2&quot;？</translation>
    </message>
    <message>
        <source>the unit ignores &quot;%1&quot;; is &quot;%2&quot; meant?</source>
        <translation>车机忽略 &quot;%1&quot;；是否应为 &quot;%2&quot;？</translation>
    </message>
    <message>
        <source>the unit knows no &quot;%1&quot; in [%2] and ignores it</source>
        <translation>车机不认识 &quot;%1&quot;（在 [%2] 中），将其忽略</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not stand in [%2] itself: the unit ignores it</source>
        <translation>&quot;%1&quot; 不直接位于 [%2] 中：车机将其忽略</translation>
    </message>
    <message>
        <source>the unit does not find the value of &quot;%1&quot; and stores none</source>
        <translation>车机找不到 &quot;%1&quot; 的值，不会存储</translation>
    </message>
    <message numerus="yes">
        <source>%n key(s) from here on stand in no group: the unit ignores them</source>
        <translation>
            <numerusform>从此处起有 %n 个键不属于任何组：车机将其忽略</numerusform>
        </translation>
    </message>
    <message>
        <source>[%1] has no &quot;%2&quot;: the group is off</source>
        <translation>[%1] 没有 &quot;%2&quot;：该组已关闭</translation>
    </message>
    <message>
        <source>[%1] is off</source>
        <translation>[%1] 已关闭</translation>
    </message>
    <message>
        <source>[%1] is on but has no settings: the unit stores none</source>
        <translation>[%1] 已打开但没有设置：车机不存储任何内容</translation>
    </message>
    <message>
        <source>[%1] is on but sets nothing to be confirmed: the operator sees no message of it</source>
        <translation>[%1] 已打开但没有需要确认的设置：操作员看不到相应消息</translation>
    </message>
    <message>
        <source>[%1] is on but has no &quot;%2&quot;: the unit does nothing</source>
        <translation>[%1] 已打开但没有 &quot;%2&quot;：车机不做任何事</translation>
    </message>
    <message>
        <source>the unit knows no group [%1] and ignores it</source>
        <translation>车机不认识组 [%1]，将其忽略</translation>
    </message>
    <message>
        <source>the unit ignores the group [%1]; is [%2] meant?</source>
        <translation>车机忽略组 [%1]；是否应为 [%2]？</translation>
    </message>
    <message>
        <source>no group enters a production item: the unit says so and leaves production mode at once</source>
        <translation>没有任何组进入生产项：车机会提示，并立即退出生产模式</translation>
    </message>
    <message>
        <source>[%1] has the mode %2: the group counts as entered, but no unit takes anything (1 and 2 do)</source>
        <translation>[%1] 的 mode 为 %2：该组计为已进入，但车机不会取用任何内容（1 和 2 才会）</translation>
    </message>
    <message>
        <source>&quot;%1&quot; only counts together with &quot;%2&quot;: the unit takes entries of any length</source>
        <translation>&quot;%1&quot; 只有与 &quot;%2&quot; 一起才有效：车机取用任意长度的条目</translation>
    </message>
    <message>
        <source>no entry can begin with the prefix &quot;%1&quot; (prefixes are parted by commas alone, blanks belong to them)</source>
        <translation>没有条目能以前缀 &quot;%1&quot; 开头（前缀只以逗号分隔，空格属于前缀本身）</translation>
    </message>
    <message numerus="yes">
        <source>none of the %n entries of [%1] can be taken: no unit gets a value</source>
        <translation>
            <numerusform>%n 个条目（[%1]）都不能取用：没有车机能得到值</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>[%1] has enough for %n unit(s) only</source>
        <translation>
            <numerusform>[%1] 只够 %n 台车机使用</numerusform>
        </translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; holds blanks or control characters: the unit takes them as part of the value</source>
        <translation>条目 &quot;%1&quot; 含有空格或控制字符：车机把它们作为值的一部分</translation>
    </message>
    <message>
        <source>the entry %1 holds a quote, a comma or a backslash: the unit takes the line as one value, as it stands</source>
        <translation>条目 %1 含有引号、逗号或反斜杠：车机把整行原样作为一个值</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; holds characters that the completion marker cannot: the unit writes &quot;?&quot; for them</source>
        <translation>条目 &quot;%1&quot; 含有完成记录无法表示的字符：车机以 &quot;?&quot; 代替</translation>
    </message>
    <message>
        <source>the unit takes &quot;%1&quot; for a pool entry; is &quot;%2&quot; meant?</source>
        <translation>车机把 &quot;%1&quot; 当作池中的条目；是否应为 &quot;%2&quot;？</translation>
    </message>
    <message>
        <source>no unit ever takes &quot;%1&quot;: it has not the prefix or length required</source>
        <translation>没有车机会取用 &quot;%1&quot;：前缀或长度不符合要求</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has a value: the unit takes only what stands before the &quot;=&quot;</source>
        <translation>&quot;%1&quot; 带有值：车机只取用 &quot;=&quot; 之前的部分</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands in the pool already: it serves one unit only</source>
        <translation>&quot;%1&quot; 在池中已存在：只能供一台车机使用</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands in %2:%3 too: two units will get it</source>
        <translation>&quot;%1&quot; 也出现在 %2:%3：会有两台车机得到它</translation>
    </message>
    <message>
        <source>there is none of %1: the unit ignores the stick</source>
        <translation>没有 %1 中的任何一个：车机忽略该U盘</translation>
    </message>
    <message>
        <source>nearly the name of a configuration file: the unit does not look at it</source>
        <translation>与配置文件名相近：车机不会读取它</translation>
    </message>
    <message>
        <source>the unit never looks at it: %1 is there and wins</source>
        <translation>车机从不读取它：有 %1，以它为准</translation>
    </message>
    <message>
        <source>left by a rewrite that was cut off: the unit removes it; see whether the stick is sound</source>
        <translation>改写中断后遗留：车机会将其删除；请检查U盘是否完好</translation>
    </message>
    <message>
        <source>left by a rewrite that was cut off: the unit leaves it alone; see whether the stick is sound</source>
        <translation>改写中断后遗留：车机不会处理；请检查U盘是否完好</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was cut off while it was written: nobody knows what the unit took</source>
        <translation>&quot;%1&quot; 在写入时中断：无法得知车机取用了什么</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was given to a unit already (%2:%3): another one will get it</source>
        <translation>&quot;%1&quot; 已分配给一台车机（%2:%3）：会有另一台再次得到它</translation>
    </message>
    <message>
        <source>the stick cannot be written to: what a unit takes stays in the file, and the next one takes it again</source>
        <translation>U盘不可写：车机取用的值仍留在文件中，下一台会再次取用</translation>
    </message>
    <message>
        <source>the stick has %1 bytes left, and the rewrite wants %2: it may fail, and the next unit then takes the same again</source>
        <translation>U盘剩余 %1 字节，而改写需要 %2 字节：改写可能失败，下一台车机会再次取用同一个值</translation>
    </message>
    <message>
        <source>the file begins with a byte-order mark: the unit drops it</source>
        <translation>文件以字节顺序标记开头：车机会将其去掉</translation>
    </message>
    <message>
        <source>the file is UTF-16 or UTF-32: the unit reads it, and its rewrite stores UTF-8</source>
        <translation>文件是 UTF-16 或 UTF-32：车机可以读取，改写后存为 UTF-8</translation>
    </message>
    <message>
        <source>section header without &quot;]&quot;: the unit takes nothing of the whole file</source>
        <translation>节标题缺少 &quot;]&quot;：车机不会取用整个文件的任何内容</translation>
    </message>
    <message>
        <source>the unit ignores what stands behind [%1] on this line</source>
        <translation>车机忽略本行 [%1] 之后的内容</translation>
    </message>
    <message>
        <source>[%1] was there before: the unit takes both as one section</source>
        <translation>[%1] 前面已出现过：车机把两者视为同一节</translation>
    </message>
    <message>
        <source>the line ends in a backslash: the unit takes nothing of the whole file</source>
        <translation>行尾是反斜杠：车机不会取用整个文件的任何内容</translation>
    </message>
    <message>
        <source>a double quote has no partner: the unit takes the rest of the line as text, commas and comment included</source>
        <translation>双引号不成对：车机把该行其余部分（包括逗号和注释）作为文本</translation>
    </message>
    <message>
        <source>the line begins with &quot;=&quot;: the unit has no key to look for it</source>
        <translation>该行以 &quot;=&quot; 开头：车机没有键可以查找它</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was set in line %2: the unit takes this line</source>
        <translation>&quot;%1&quot; 在第 %2 行已设置：车机以本行为准</translation>
    </message>
    <message>
        <source>Print JSON instead of text.</source>
        <translation>输出 JSON 而不是文本。</translation>
    </message>
    <message>
        <source>Report pools with fewer than N usable entries. Default: 10.</source>
        <translation>报告可用条目少于 N 个的池。默认为 10。</translation>
    </message>
    <message>
        <source>Print at most N findings of each code and file, 0 for all. Default: 20.</source>
        <translation>每个文件的每种代码最多输出 N 条，0 表示全部。默认为 20。</translation>
    </message>
    <message>
        <source>The unit&apos;s highest backlight step, 0 to 255: its step tables hold one value more.</source>
        <translation>车机的最高背光级别，0 到 255：背光级别表的值比它多一个。</translation>
    </message>
    <message>
        <source>All serials handed to the line: a production file as it was first issued, or one serial per line. May be repeated.</source>
        <translation>发给产线的全部序列号：最初发放的生产文件，或每行一个序列号的文件。可重复使用。</translation>
    </message>
    <message>
        <source>How many sticks to make.</source>
        <translation>要制作的U盘数量。</translation>
    </message>
    <message>
        <source>The folder that gets the folders stick-1 to stick-N; created when missing.</source>
        <translation>用来存放文件夹 stick-1 到 stick-N 的文件夹；不存在时自动创建。</translation>
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
        <source>A production file.</source>
        <translation>生产文件。</translation>
    </message>
    <message>
        <source>Show what the unit reads: every key, its value and its comment.</source>
        <translation>显示车机读到的内容：每个键及其值和注释。</translation>
    </message>
    <message>
        <source>Print the file as the unit&apos;s rewrite will leave it.</source>
        <translation>输出车机改写之后的文件内容。</translation>
    </message>
    <message>
        <source>A production file, or the folder of a stick.</source>
        <translation>生产文件，或U盘的文件夹。</translation>
    </message>
    <message>
        <source>Tell what is wrong or surprising, and what the unit will do about it.</source>
        <translation>指出错误或出人意料之处，以及车机会如何处理。</translation>
    </message>
    <message>
        <source>The folder of a stick.</source>
        <translation>U盘的文件夹。</translation>
    </message>
    <message>
        <source>Tell what became of the serials on sticks that were in use.</source>
        <translation>说明用过的U盘上的序列号的去向。</translation>
    </message>
    <message>
        <source>Make several sticks with disjoint pools out of one file.</source>
        <translation>用一个文件制作多个池互不重复的U盘。</translation>
    </message>
    <message>
        <source>Exit codes:
  0  nothing to report
  1  something was found: an unreadable file, findings of check, serials
     that audit finds duplicate, missing, foreign or torn
  2  something cannot be read or written, or wrong usage
</source>
        <translation>退出码：
  0  没有问题
  1  发现问题：文件不可读、check 有发现，或 audit 发现重复、缺失、
     外来或残缺的序列号
  2  无法读取或写入，或用法错误
</translation>
    </message>
    <message>
        <source>Usage: production-stick COMMAND [options] ...
Prepares and examines the sticks that units are produced with.

Commands:
</source>
        <translation>用法：production-stick COMMAND [options] ...
制作和检查生产车机所用的U盘。

命令：
</translation>
    </message>
    <message>
        <source>
production-stick COMMAND --help tells the options of a command.
show, format, check and audit never write to a stick.

</source>
        <translation>
各命令的选项见 production-stick COMMAND --help。
show、format、check 和 audit 从不写入U盘。

</translation>
    </message>
    <message>
        <source>%1 needs a %2.</source>
        <translation>%1 需要 %2。</translation>
    </message>
    <message>
        <source>an empty text is no %1.</source>
        <translation>空文本不能作为 %1。</translation>
    </message>
    <message>
        <source>%1 takes one %2; &quot;%3&quot; is one too many.</source>
        <translation>%1 只需要一个 %2；&quot;%3&quot; 是多余的。</translation>
    </message>
    <message>
        <source>--%1 takes a number from %2 to %3, not &quot;%4&quot;.</source>
        <translation>--%1 需要 %2 到 %3 之间的数字，而不是 &quot;%4&quot;。</translation>
    </message>
    <message>
        <source>split needs --sticks with their number.</source>
        <translation>split 需要用 --sticks 指定数量。</translation>
    </message>
    <message>
        <source>split needs --into with a folder.</source>
        <translation>split 需要用 --into 指定文件夹。</translation>
    </message>
    <message>
        <source>production-stick --help tells the usage.</source>
        <translation>用法见 production-stick --help。</translation>
    </message>
    <message>
        <source>a command is missing.</source>
        <translation>缺少命令。</translation>
    </message>
    <message>
        <source>there is no command &quot;%1&quot;.</source>
        <translation>没有命令 &quot;%1&quot;。</translation>
    </message>
    <message>
        <source>reading %1</source>
        <translation>正在读取 %1</translation>
    </message>
    <message>
        <source>%1: cannot be read: %2</source>
        <translation>%1：无法读取：%2</translation>
    </message>
    <message>
        <source>not a file</source>
        <translation>不是文件</translation>
    </message>
    <message>
        <source>standard output does not take everything</source>
        <translation>标准输出未能全部写出</translation>
    </message>
    <message>
        <source>%1: neither a configuration file nor a completion marker</source>
        <translation>%1：既没有配置文件，也没有完成记录</translation>
    </message>
    <message>
        <source>done in %1</source>
        <translation>已用于 %1</translation>
    </message>
    <message>
        <source>free in %1</source>
        <translation>未用，在 %1</translation>
    </message>
    <message>
        <source>%1 %2:%3: &quot;%4&quot;</source>
        <translation>%1 %2:%3：&quot;%4&quot;</translation>
    </message>
    <message>
        <source>torn</source>
        <translation>残缺</translation>
    </message>
    <message>
        <source>%1 %2: no unit can read it, see production-stick check</source>
        <translation>%1 %2：车机无法读取，见 production-stick check</translation>
    </message>
    <message>
        <source>unreadable</source>
        <translation>不可读</translation>
    </message>
    <message>
        <source>duplicate</source>
        <translation>重复</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>缺失</translation>
    </message>
    <message>
        <source>foreign</source>
        <translation>外来</translation>
    </message>
    <message>
        <source>%1: %2 free, %3 done, %4 duplicate, %5 missing, %6 foreign</source>
        <translation>%1：未用 %2 个，已用 %3 个，重复 %4 个，缺失 %5 个，外来 %6 个</translation>
    </message>
    <message>
        <source>reading the sticks</source>
        <translation>正在读取U盘</translation>
    </message>
    <message numerus="yes">
        <source>%n line(s) from here on hold U+FFFD: what was no text was lost in an earlier rewrite</source>
        <translation>
            <numerusform>从此处起有 %n 行含有 U+FFFD：非文本的内容已在以前的改写中丢失</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n line(s) from here on hold bytes that are no text: the unit reads U+FFFD for them, and its rewrite stores that</source>
        <translation>
            <numerusform>从此处起有 %n 行含有非文本的字节：车机读作 U+FFFD，改写时也照此存储</numerusform>
        </translation>
    </message>
    <message>
        <source>more text than a unit&apos;s memory holds: the unit takes nothing of it</source>
        <translation>文本超出车机内存：车机不会取用其中任何内容</translation>
    </message>
    <message numerus="yes">
        <source>the pool %1 has %n usable entries, fewer than sticks</source>
        <translation>
            <numerusform>池 %1 只有 %n 个可用条目，少于U盘数量</numerusform>
        </translation>
    </message>
    <message>
        <source>there is no pool entry to be dealt out</source>
        <translation>没有可以分配的池条目</translation>
    </message>
    <message>
        <source>%1: is there already, nothing is overwritten</source>
        <translation>%1：已存在，不会覆盖任何内容</translation>
    </message>
    <message>
        <source>%1: cannot be made</source>
        <translation>%1：无法创建</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>%1: cannot be written: %2</source>
        <translation>%1：无法写入：%2</translation>
    </message>
    <message>
        <source>%1 %2 entries, %3 to %4</source>
        <translation>%1 %2 个条目，%3 到 %4</translation>
    </message>
    <message>
        <source>splitting %1</source>
        <translation>正在拆分 %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: %2 has more than 32 bits: the unit reads %3</source>
        <translation>&quot;%1&quot;：%2 超出 32 位：车机读作 %3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is empty: the unit stores that, and its display size is lost</source>
        <translation>&quot;%1&quot; 为空：车机照样存储，原有的屏幕尺寸丢失</translation>
    </message>
    <message>
        <source>[%1] knows no &quot;%2&quot;: the unit takes &quot;%3&quot; for a pool entry</source>
        <translation>[%1] 没有 &quot;%2&quot; 这个设置：车机把 &quot;%3&quot; 当作池中的条目</translation>
    </message>
    <message>
        <source>there is none of %1: the unit ignores the stick; a rewrite that was cut off may have left its file in %2</source>
        <translation>没有 %1 中的任何一个：车机忽略该U盘；中断的重写可能把文件留在了 %2</translation>
    </message>
    <message>
        <source>the file ends within a character: the unit drops what is there of it</source>
        <translation>文件在一个字符中间结束：车机丢弃该字符的残余部分</translation>
    </message>
    <message>
        <source>%1: too large for a completion marker</source>
        <translation>%1：过大，不可能是完成标记文件</translation>
    </message>
</context>
</TS>
