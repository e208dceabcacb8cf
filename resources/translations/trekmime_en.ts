<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>DateTimePicker</name>
    <message>
        <source>Date and time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Today</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FavoriteEntry</name>
    <message>
        <source>Unknow</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FavoritesTableView</name>
    <message>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No saved places yet.
Choose a place on the map and press “Add To →”.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FavoritesViewController</name>
    <message>
        <source>Favorites</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import favorites from a GPX file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export favorites to a GPX file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import favorites</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This GPX file cannot be used: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The favorites could not be saved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export favorites</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileChoice</name>
    <message>
        <source>GPX files (*.gpx)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FlatSwitch</name>
    <message>
        <source>ON</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OFF</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>InfoViewController</name>
    <message>
        <source>White List</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Visit Velmora</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Contact Author</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Back</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Location</name>
    <message>
        <source>定位服务未开启</source>
        <translation>Location services are off</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>获取数据失败，定位服务未开启</source>
        <translation>Could not get data: location services are off</translation>
    </message>
    <message>
        <source>获取地理位置失败</source>
        <translation>Could not get the location</translation>
    </message>
    <message>
        <source>定位失败</source>
        <translation>Location failed</translation>
    </message>
    <message>
        <source>请开启定位以保证程序正常运行</source>
        <translation>Please turn on location services so the application can work properly</translation>
    </message>
</context>
<context>
    <name>MapView</name>
    <message>
        <source>Map</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ModeChange</name>
    <message>
        <source>Spotmime is working,please turn off the Spotmime first!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ModeScreenLayout</name>
    <message>
        <source>Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current location</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>NominatimGeocoder</name>
    <message>
        <source>No network access.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The geocoding service did not answer within %1 seconds.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The geocoding service refused the request (HTTP %1): %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The geocoding service answered with HTTP status %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The geocoding service sent an answer that is not JSON (%1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The geocoding service found nothing: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The geocoding service found no place for this request.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the geocoding service</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OsrmDirectionsService</name>
    <message>
        <source>No network access.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The routing service did not answer within %1 seconds.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The routing service answered with HTTP status %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The routing service sent an answer that is not the expected JSON.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The routing service sent a route whose line cannot be read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The routing service found no route.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A newer route request replaced this one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A route needs a start and an end.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the routing service</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PropertyList</name>
    <message>
        <source>not a regular file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>larger than any settings file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not a property list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>changed while it was read</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PropertyListGuard</name>
    <message>
        <source>nested more than %1 levels deep</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not a well-formed binary property list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>expands to more than %L1 values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>larger than %L1 MB</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QtPositionSource</name>
    <message>
        <source>Access to the device position was denied.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The position source is closed or not available.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No position arrived in time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The position source failed.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ReplyFailure</name>
    <message>
        <source>The request to %1 was redirected in a loop (%2).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The request to %1 was redirected to an insecure address.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot reach %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection to %1 broke off before its whole answer came: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RoutinoDirectionsService</name>
    <message>
        <source>The start is too far from any road on the offline map.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The end is too far from any road on the offline map.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop %1 is too far from any road on the offline map.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The offline map has no road route to the end.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The offline map has no road route to stop %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The routing profiles in %1 cannot be read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The offline map cannot plan routes for %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The installed Routino library does not fit this program.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No offline map can be read in %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Routino could not plan the route (error %1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A route needs a start and an end.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Offline routing plans for driving, walking or cycling, not &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A newer route request replaced this one.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SelectAddressViewController</name>
    <message>
        <source>Enter Address Here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CANCEL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search Failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Address is loading, please wait</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SpotmimeViewController</name>
    <message>
        <source>Spotmime</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trekmime</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Searching</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search Failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enter Address Here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Coordinate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please Enter Favorites Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add To →</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Favorites</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CANCEL</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TMPreferenceUtil</name>
    <message>
        <source>not a dictionary</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not an array</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TrekmimeViewController</name>
    <message>
        <source>Trekmime</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Spotmime</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please choose Start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please choose End</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please choose Start Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please choose End Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide choices</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trekmime is working</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show choices</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Confirm time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Load GPX…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Load a GPX file as the route</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file holds no track or route.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This GPX file cannot be used: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Walk</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cycle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drive</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A place to pass between Start and End</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pace</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a pace</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fills the end time from the route&apos;s length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Even pace</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Equal steps along the road</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>At most %1 stops</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove stop %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose Start and End first: the pace needs the planned route</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>At this pace the trip would end too late</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TripController</name>
    <message>
        <source>Please choose Start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please choose End</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please choose Start Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please choose End Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End Time must later than Start Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Path planning failure, rechoose Start/End please</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trekmime is working,please turn off the Trekmime first!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No route planning service.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WhitelistViewController</name>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>White List</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
