<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>FavoriteEntry</name>
    <message>
        <source>Unknow</source>
        <translation>未知</translation>
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
        <source>Trekmime is working,please turn off the Trekmime first!</source>
        <translation>Trekmime 正在运行，请先关闭 Trekmime！</translation>
    </message>
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
        <source>Cannot reach the geocoding service: %1</source>
        <translation>无法连接地理编码服务：%1</translation>
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
    <name>SpotmimeViewController</name>
    <message>
        <source>Spotmime</source>
        <translation>Spotmime</translation>
    </message>
    <message>
        <source>Stay at one place</source>
        <translation>停留在一个地点</translation>
    </message>
    <message>
        <source>Trekmime</source>
        <translation>Trekmime</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>TrekmimeViewController</name>
    <message>
        <source>Trekmime</source>
        <translation>Trekmime</translation>
    </message>
    <message>
        <source>Travel along a route</source>
        <translation>沿路线行进</translation>
    </message>
    <message>
        <source>Spotmime</source>
        <translation>Spotmime</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
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
