#pragma once

#include <string>

// Names in the description of a data model.
namespace NQDataModelTags {

// ---- Elements -----------------------------------------------------------------------------------

inline const std::string XML_ELE_DATAMODEL = "DataModel";
inline const std::string XML_ELE_FIELD = "Field";
inline const std::string XML_ELE_FIELDS = "Fields";

// ---- Attributes ---------------------------------------------------------------------------------

inline const std::string XML_ATT_COUNT = "count";
inline const std::string XML_ATT_DISPLAYLABEL = "displayLabel";
inline const std::string XML_ATT_MEASURE = "measure";
inline const std::string XML_ATT_NAME = "name";
inline const std::string XML_ATT_ROLE = "role";
inline const std::string XML_ATT_STORAGE = "storage";

// ---- Values -------------------------------------------------------------------------------------

inline const std::string XML_VAL_CONTINUOUS = "continuous";
inline const std::string XML_VAL_DATE = "date";
inline const std::string XML_VAL_DISCRETE = "discrete";
inline const std::string XML_VAL_FLAG = "flag";
inline const std::string XML_VAL_FREQWEIGHT = "freqWeight";
inline const std::string XML_VAL_INPUT = "input";
inline const std::string XML_VAL_INTEGER = "integer";
inline const std::string XML_VAL_NOMINAL = "nominal";
inline const std::string XML_VAL_NONE = "none";
inline const std::string XML_VAL_ORDINAL = "ordinal";
inline const std::string XML_VAL_REAL = "real";
inline const std::string XML_VAL_RECORDID = "recordId";
inline const std::string XML_VAL_STRING = "string";
inline const std::string XML_VAL_TARGET = "target";
inline const std::string XML_VAL_TIME = "time";
inline const std::string XML_VAL_TIMESTAMP = "timestamp";
inline const std::string XML_VAL_TYPELESS = "typeless";
inline const std::string XML_VAL_UNKNOWN = "unknown";

}  // namespace NQDataModelTags
