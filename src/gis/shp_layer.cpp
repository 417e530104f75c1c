#include "gis/layer_table.h"
#include "run_control/exits.h"

void shpOpen(GisLayer&) { SHOULD_NOT_BE_HERE("shpOpen"); }
void shpClose(GisLayer&) { SHOULD_NOT_BE_HERE("shpClose"); }
void shpReadHeader(GisLayer&) { SHOULD_NOT_BE_HERE("shpReadHeader"); }
void shpWriteHeader(GisLayer&) { SHOULD_NOT_BE_HERE("shpWriteHeader"); }
std::int64_t shpNumberRecords(GisLayer&) { SHOULD_NOT_BE_HERE("shpNumberRecords"); }
GisRead shpObjectType(GisLayer&, GisObject&) { SHOULD_NOT_BE_HERE("shpObjectType"); }
GisRead shpReadObject(GisLayer&, GisObject&) { SHOULD_NOT_BE_HERE("shpReadObject"); }
GisRead shpReadRecord(GisLayer&, std::string&) { SHOULD_NOT_BE_HERE("shpReadRecord"); }
void shpGotoBeginningOfData(GisLayer&) { SHOULD_NOT_BE_HERE("shpGotoBeginningOfData"); }
void shpWriteObject(GisLayer&, const GisObject&) { SHOULD_NOT_BE_HERE("shpWriteObject"); }
bool shpWriteRecord(GisLayer&, std::string_view, bool) { SHOULD_NOT_BE_HERE("shpWriteRecord"); }
void shpWriteEoF(GisLayer&) { SHOULD_NOT_BE_HERE("shpWriteEoF"); }
