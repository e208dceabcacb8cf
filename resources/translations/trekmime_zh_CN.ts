<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>DateTimePicker</name>
    <message>
        <source>Date and time</source>
        <translation>日期和时间</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>今天</translation>
    </message>
</context>
<context>
    <name>FavoriteEntry</name>
    <message>
        <source>Unknow</source>
        <translation>未知</translation>
    </message>
</context>
<context>
    <name>FavoritesTableView</name>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>No saved places yet.
Choose a place on the map and press “Add To →”.</source>
        <translation>还没有收藏的地点。
在地图上选择一个地点，然后点按“添加 →”。</translation>
    </message>
</context>
<context>
    <name>FavoritesViewController</name>
    <message>
        <source>Favorites</source>
        <translation>收藏</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>编辑</translation>
    </message>
    <message>
        <source>Unknow</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>完成</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>导入</translation>
    </message>
    <message>
        <source>Import favorites from a GPX file</source>
        <translation>从 GPX 文件导入收藏</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>导出</translation>
    </message>
    <message>
        <source>Export favorites to a GPX file</source>
        <translation>将收藏导出为 GPX 文件</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Import favorites</source>
        <translation>导入收藏</translation>
    </message>
    <message>
        <source>This GPX file cannot be used: %1</source>
        <translation>无法使用此 GPX 文件：%1</translation>
    </message>
    <message>
        <source>The favorites could not be saved.</source>
        <translation>无法保存收藏。</translation>
    </message>
    <message>
        <source>Export favorites</source>
        <translation>导出收藏</translation>
    </message>
</context>
<context>
    <name>FileChoice</name>
    <message>
        <source>GPX files (*.gpx)</source>
        <translation>GPX 文件 (*.gpx)</translation>
    </message>
</context>
<context>
    <name>FlatSwitch</name>
    <message>
        <source>ON</source>
        <translation>开</translation>
    </message>
    <message>
        <source>OFF</source>
        <translation>关</translation>
    </message>
</context>
<context>
    <name>InfoViewController</name>
    <message>
        <source>White List</source>
        <translation>白名单</translation>
    </message>
    <message>
        <source>Visit Velmora</source>
        <translation>访问 Velmora</translation>
    </message>
    <message>
        <source>Contact Author</source>
        <translation>联系作者</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
</context>
<context>
    <name>Location</name>
    <message>
        <source>定位服务未开启</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>获取数据失败，定位服务未开启</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>获取地理位置失败</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>定位失败</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请开启定位以保证程序正常运行</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MapView</name>
    <message>
        <source>Map</source>
        <translation>地图</translation>
    </message>
</context>
<context>
    <name>ModeChange</name>
    <message>
        <source>Spotmime is working,please turn off the Spotmime first!</source>
        <translation>Spotmime 正在运行，请先关闭 Spotmime！</translation>
    </message>
</context>
<context>
    <name>ModeScreenLayout</name>
    <message>
        <source>Mode</source>
        <translation>模式</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>信息</translation>
    </message>
    <message>
        <source>Current location</source>
        <translation>当前位置</translation>
    </message>
</context>
<context>
    <name>NominatimGeocoder</name>
    <message>
        <source>No network access.</source>
        <translation>没有网络连接。</translation>
    </message>
    <message>
        <source>The geocoding service did not answer within %1 seconds.</source>
        <translation>地理编码服务在 %1 秒内没有应答。</translation>
    </message>
    <message>
        <source>The geocoding service refused the request (HTTP %1): %2</source>
        <translation>地理编码服务拒绝了请求（HTTP %1）：%2</translation>
    </message>
    <message>
        <source>The geocoding service answered with HTTP status %1.</source>
        <translation>地理编码服务返回了 HTTP 状态 %1。</translation>
    </message>
    <message>
        <source>The geocoding service sent an answer that is not JSON (%1).</source>
        <translation>地理编码服务的应答不是 JSON（%1）。</translation>
    </message>
    <message>
        <source>The geocoding service found nothing: %1</source>
        <translation>地理编码服务没有找到结果：%1</translation>
    </message>
    <message>
        <source>The geocoding service found no place for this request.</source>
        <translation>地理编码服务没有找到与此请求对应的地点。</translation>
    </message>
    <message>
        <source>the geocoding service</source>
        <translation>地理编码服务</translation>
    </message>
</context>
<context>
    <name>OsrmDirectionsService</name>
    <message>
        <source>No network access.</source>
        <translation>无法访问网络。</translation>
    </message>
    <message>
        <source>The routing service did not answer within %1 seconds.</source>
        <translation>路线规划服务在 %1 秒内没有应答。</translation>
    </message>
    <message>
        <source>The routing service answered with HTTP status %1.</source>
        <translation>路线规划服务返回了 HTTP 状态 %1。</translation>
    </message>
    <message>
        <source>The routing service sent an answer that is not the expected JSON.</source>
        <translation>路线规划服务返回的不是预期的 JSON。</translation>
    </message>
    <message>
        <source>The routing service sent a route whose line cannot be read.</source>
        <translation>路线规划服务返回的路线无法读取。</translation>
    </message>
    <message>
        <source>The routing service found no route.</source>
        <translation>路线规划服务没有找到路线。</translation>
    </message>
    <message>
        <source>A newer route request replaced this one.</source>
        <translation>这个路线请求已被更新的请求取代。</translation>
    </message>
    <message>
        <source>A route needs a start and an end.</source>
        <translation>路线需要起点和终点。</translation>
    </message>
    <message>
        <source>the routing service</source>
        <translation>路线规划服务</translation>
    </message>
</context>
<context>
    <name>PropertyList</name>
    <message>
        <source>not a regular file</source>
        <translation>不是普通文件</translation>
    </message>
    <message>
        <source>larger than any settings file</source>
        <translation>大于任何设置文件应有的大小</translation>
    </message>
    <message>
        <source>not a property list</source>
        <translation>不是属性列表</translation>
    </message>
    <message>
        <source>changed while it was read</source>
        <translation>读取期间被修改</translation>
    </message>
</context>
<context>
    <name>PropertyListGuard</name>
    <message>
        <source>nested more than %1 levels deep</source>
        <translation>嵌套超过 %1 层</translation>
    </message>
    <message>
        <source>not a well-formed binary property list</source>
        <translation>不是格式正确的二进制属性列表</translation>
    </message>
    <message>
        <source>expands to more than %L1 values</source>
        <translation>展开后超过 %L1 个值</translation>
    </message>
    <message>
        <source>larger than %L1 MB</source>
        <translation>大于 %L1 MB</translation>
    </message>
</context>
<context>
    <name>QtPositionSource</name>
    <message>
        <source>Access to the device position was denied.</source>
        <translation>访问设备位置被拒绝。</translation>
    </message>
    <message>
        <source>The position source is closed or not available.</source>
        <translation>位置来源已关闭或不可用。</translation>
    </message>
    <message>
        <source>No position arrived in time.</source>
        <translation>未能及时获得位置。</translation>
    </message>
    <message>
        <source>The position source failed.</source>
        <translation>位置来源出错。</translation>
    </message>
</context>
<context>
    <name>ReplyFailure</name>
    <message>
        <source>The request to %1 was redirected in a loop (%2).</source>
        <translation>对%1的请求陷入循环重定向（%2）。</translation>
    </message>
    <message>
        <source>The request to %1 was redirected to an insecure address.</source>
        <translation>对%1的请求被重定向到不安全的地址。</translation>
    </message>
    <message>
        <source>Cannot reach %1: %2</source>
        <translation>无法连接%1：%2</translation>
    </message>
    <message>
        <source>The connection to %1 broke off before its whole answer came: %2</source>
        <translation>与%1的连接在完整回复到达前中断：%2</translation>
    </message>
</context>
<context>
    <name>RoutinoDirectionsService</name>
    <message>
        <source>The start is too far from any road on the offline map.</source>
        <translation>离线地图上，起点离任何道路都太远。</translation>
    </message>
    <message>
        <source>The end is too far from any road on the offline map.</source>
        <translation>离线地图上，终点离任何道路都太远。</translation>
    </message>
    <message>
        <source>Stop %1 is too far from any road on the offline map.</source>
        <translation>离线地图上，第 %1 个途经点离任何道路都太远。</translation>
    </message>
    <message>
        <source>The offline map has no road route to the end.</source>
        <translation>离线地图上没有通往终点的道路路线。</translation>
    </message>
    <message>
        <source>The offline map has no road route to stop %1.</source>
        <translation>离线地图上没有通往第 %1 个途经点的道路路线。</translation>
    </message>
    <message>
        <source>The routing profiles in %1 cannot be read.</source>
        <translation>无法读取 %1 中的路线规划配置。</translation>
    </message>
    <message>
        <source>The offline map cannot plan routes for %1.</source>
        <translation>离线地图无法为 %1 规划路线。</translation>
    </message>
    <message>
        <source>The installed Routino library does not fit this program.</source>
        <translation>已安装的 Routino 库与本程序不匹配。</translation>
    </message>
    <message>
        <source>No offline map can be read in %1.</source>
        <translation>无法读取 %1 中的离线地图。</translation>
    </message>
    <message>
        <source>Routino could not plan the route (error %1).</source>
        <translation>Routino 无法规划路线（错误 %1）。</translation>
    </message>
    <message>
        <source>A route needs a start and an end.</source>
        <translation>路线需要起点和终点。</translation>
    </message>
    <message>
        <source>Offline routing plans for driving, walking or cycling, not &quot;%1&quot;.</source>
        <translation>离线路线规划只支持驾车、步行或骑行，不支持“%1”。</translation>
    </message>
    <message>
        <source>A newer route request replaced this one.</source>
        <translation>这个路线请求已被更新的请求取代。</translation>
    </message>
</context>
<context>
    <name>SelectAddressViewController</name>
    <message>
        <source>Enter Address Here</source>
        <translation>在此输入地址</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>CANCEL</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Unknow</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>Search Failed</source>
        <translation>搜索失败</translation>
    </message>
    <message>
        <source>Address is loading, please wait</source>
        <translation>地址加载中，请稍候</translation>
    </message>
</context>
<context>
    <name>SpotmimeViewController</name>
    <message>
        <source>Spotmime</source>
        <translation>Spotmime</translation>
    </message>
    <message>
        <source>Trekmime</source>
        <translation>Trekmime</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Unknow</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>Searching</source>
        <translation>正在搜索</translation>
    </message>
    <message>
        <source>Search Failed</source>
        <translation>搜索失败</translation>
    </message>
    <message>
        <source>Enter Address Here</source>
        <translation>在此输入地址</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>Coordinate</source>
        <translation>坐标</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Please Enter Favorites Name</source>
        <translation>请输入收藏名称</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Add To →</source>
        <translation>添加 →</translation>
    </message>
    <message>
        <source>Favorites</source>
        <translation>收藏</translation>
    </message>
    <message>
        <source>CANCEL</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>TMPreferenceUtil</name>
    <message>
        <source>not a dictionary</source>
        <translation>不是字典</translation>
    </message>
    <message>
        <source>not an array</source>
        <translation>不是数组</translation>
    </message>
</context>
<context>
    <name>TrekmimeViewController</name>
    <message>
        <source>Trekmime</source>
        <translation>Trekmime</translation>
    </message>
    <message>
        <source>Spotmime</source>
        <translation>Spotmime</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>起点</translation>
    </message>
    <message>
        <source>End</source>
        <translation>终点</translation>
    </message>
    <message>
        <source>Start Time</source>
        <translation>开始时间</translation>
    </message>
    <message>
        <source>End Time</source>
        <translation>结束时间</translation>
    </message>
    <message>
        <source>Please choose Start</source>
        <translation>请选择起点</translation>
    </message>
    <message>
        <source>Please choose End</source>
        <translation>请选择终点</translation>
    </message>
    <message>
        <source>Please choose Start Time</source>
        <translation>请选择开始时间</translation>
    </message>
    <message>
        <source>Please choose End Time</source>
        <translation>请选择结束时间</translation>
    </message>
    <message>
        <source>Hide choices</source>
        <translation>收起选项</translation>
    </message>
    <message>
        <source>Trekmime is working</source>
        <translation>Trekmime 正在运行</translation>
    </message>
    <message>
        <source>Show choices</source>
        <translation>展开选项</translation>
    </message>
    <message>
        <source>Confirm time</source>
        <translation>确认时间</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>完成</translation>
    </message>
    <message>
        <source>Load GPX…</source>
        <translation>载入 GPX…</translation>
    </message>
    <message>
        <source>Load a GPX file as the route</source>
        <translation>载入 GPX 文件作为路线</translation>
    </message>
    <message>
        <source>The file holds no track or route.</source>
        <translation>该文件没有轨迹或路线。</translation>
    </message>
    <message>
        <source>This GPX file cannot be used: %1</source>
        <translation>无法使用此 GPX 文件：%1</translation>
    </message>
    <message>
        <source>Unknow</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>Walk</source>
        <translation>步行</translation>
    </message>
    <message>
        <source>Run</source>
        <translation>跑步</translation>
    </message>
    <message>
        <source>Cycle</source>
        <translation>骑行</translation>
    </message>
    <message>
        <source>Drive</source>
        <translation>驾车</translation>
    </message>
    <message>
        <source>Add stop</source>
        <translation>添加途经点</translation>
    </message>
    <message>
        <source>A place to pass between Start and End</source>
        <translation>起点和终点之间经过的地点</translation>
    </message>
    <message>
        <source>Pace</source>
        <translation>速度</translation>
    </message>
    <message>
        <source>Choose a pace</source>
        <translation>选择速度</translation>
    </message>
    <message>
        <source>Fills the end time from the route&apos;s length</source>
        <translation>根据路线长度填写结束时间</translation>
    </message>
    <message>
        <source>Even pace</source>
        <translation>匀速</translation>
    </message>
    <message>
        <source>Equal steps along the road</source>
        <translation>沿路等距前进</translation>
    </message>
    <message>
        <source>At most %1 stops</source>
        <translation>最多 %1 个途经点</translation>
    </message>
    <message>
        <source>Stop %1</source>
        <translation>途经点 %1</translation>
    </message>
    <message>
        <source>Remove stop %1</source>
        <translation>删除途经点 %1</translation>
    </message>
    <message>
        <source>Choose Start and End first: the pace needs the planned route</source>
        <translation>请先选择起点和终点：速度需要规划好的路线</translation>
    </message>
    <message>
        <source>At this pace the trip would end too late</source>
        <translation>按这个速度，行程结束得太晚了</translation>
    </message>
</context>
<context>
    <name>TripController</name>
    <message>
        <source>Please choose Start</source>
        <translation>请选择起点</translation>
    </message>
    <message>
        <source>Please choose End</source>
        <translation>请选择终点</translation>
    </message>
    <message>
        <source>Please choose Start Time</source>
        <translation>请选择开始时间</translation>
    </message>
    <message>
        <source>Please choose End Time</source>
        <translation>请选择结束时间</translation>
    </message>
    <message>
        <source>End Time must later than Start Time</source>
        <translation>结束时间必须晚于开始时间</translation>
    </message>
    <message>
        <source>Path planning failure, rechoose Start/End please</source>
        <translation>路线规划失败，请重新选择起点/终点</translation>
    </message>
    <message>
        <source>Trekmime is working,please turn off the Trekmime first!</source>
        <translation>Trekmime 正在运行，请先关闭 Trekmime！</translation>
    </message>
    <message>
        <source>No route planning service.</source>
        <translation>没有路线规划服务。</translation>
    </message>
</context>
<context>
    <name>WhitelistViewController</name>
    <message>
        <source>Done</source>
        <translation>完成</translation>
    </message>
    <message>
        <source>White List</source>
        <translation>白名单</translation>
    </message>
</context>
</TS>
