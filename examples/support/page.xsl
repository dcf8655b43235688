<?xml version="1.0" encoding="UTF-8"?>
<!-- What the pages of all models share. A stylesheet that includes this one has templates for
     s:ParameterEstimates, s:ParameterStats and s:ModelTestStats, and for s:StatXML in these modes:
     kind, what the model is; about, what it is about; tiles; fit, how well it fits. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
                xmlns:s="http://nqcommon.example/xmlns/statxml-7.0" exclude-result-prefixes="s">
<xsl:param name="date"/>
<xsl:param name="program"/>
<xsl:output method="html" encoding="UTF-8" doctype-system="about:legacy-compat" indent="no"/>

<!-- ==== Page ================================================================================== -->

<xsl:template match="/s:StatXML">
  <xsl:variable name="target" select="s:TrainingSummary/@targetField"/>
  <html lang="en">
    <head>
      <meta name="viewport" content="width=device-width, initial-scale=1"/>
      <title><xsl:apply-templates select="." mode="kind"/> of <xsl:value-of select="$target"/></title>
      <style>
        :root { --ink: #1d2733; --soft: #5d6b7a; --line: #dfe5ec; --bar: #3b7dc4; --paper: #ffffff;
                --ground: #f4f6f9; --mark: #c8553d; }
        @media (prefers-color-scheme: dark) {
          :root { --ink: #e6ebf1; --soft: #9aa8b7; --line: #313b47; --bar: #6ba6e5; --paper: #1b222b;
                  --ground: #12171d; --mark: #f08c72; } }
        body { margin: 0; background: var(--ground); color: var(--ink);
               font: 15px/1.5 system-ui, "Segoe UI", "DejaVu Sans", sans-serif; }
        main { max-width: 1080px; margin: 0 auto; padding: 32px 24px 48px; }
        h1 { font-size: 26px; margin: 0; } h1 b { color: var(--bar); font-weight: inherit; }
        h2 { font-size: 18px; margin: 32px 0 12px; }
        p { margin: 4px 0; color: var(--soft); } .message { color: var(--mark); font-weight: 600; }
        .card p { font-size: 13px; }
        .tiles { display: grid; grid-template-columns: repeat(auto-fit, minmax(155px, 1fr)); gap: 12px;
                 margin-top: 20px; }
        .charts { display: grid; grid-template-columns: repeat(auto-fill, minmax(320px, 1fr));
                  gap: 16px; }
        .card { background: var(--paper); border: 1px solid var(--line); border-radius: 8px;
                padding: 12px 16px; overflow-x: auto; }
        .tiles dt { color: var(--soft); font-size: 13px; } .tiles dl, .tiles dd { margin: 0; }
        .tiles .card { padding: 12px; }
        .tiles dd { font-size: 20px; font-variant-numeric: tabular-nums; white-space: nowrap; }
        .tiles small { display: block; font-size: 12px; color: var(--soft); }
        table { border-collapse: collapse; width: 100%; font-variant-numeric: tabular-nums; }
        th { color: var(--soft); font-weight: 600; font-size: 13px; }
        th, td { padding: 5px 10px; text-align: right; white-space: nowrap; }
        th:first-child { text-align: left; }
        tbody tr { border-top: 1px solid var(--line); }
        .redundant td { color: var(--soft); font-style: italic; }
        caption { text-align: left; color: var(--soft); font-size: 13px; padding: 2px 10px 6px; }
        tbody th { color: var(--ink); font-size: inherit; }
        .matrix { font-size: 12px; } .matrix td, .matrix th { padding: 3px 8px; }
        .far td, .far th { padding: 0 10px; } .far td:nth-child(2) { width: 70%; padding: 0; }
        .far svg { height: 26px; } .plots { grid-template-columns: repeat(2, minmax(0, 1fr)); }
        svg { display: block; width: 100%; height: auto; }
        svg text { font-size: 11px; fill: var(--soft); } svg .name { fill: var(--ink); }
        .bar, .point { fill: var(--bar); } .axis { stroke: var(--line); stroke-width: 1; }
        .frame { fill: none; stroke: var(--line); } .guide { stroke: var(--mark); }
        .cut { fill: var(--paper); stroke: var(--bar); stroke-width: 2; }
        .interval { stroke: var(--bar); stroke-width: 2; } .tick { stroke: var(--bar); stroke-width: 6; }
        .away .interval, .away .tick { stroke: var(--mark); }
        .interval, .tick, .axis { vector-effect: non-scaling-stroke; }
        h3 { font-size: 14px; margin: 0 0 8px; } sup { font-size: 0.7em; line-height: 0; }
        footer { margin-top: 32px; font-size: 13px; color: var(--soft); }
        @media (max-width: 900px) { table { font-size: 13px; } th, td { padding: 4px 5px; } }
        @media (max-width: 600px) {
          main { padding: 16px 10px 24px; } .card { padding: 8px 8px; } h1 { font-size: 21px; }
          th, td { padding: 4px 6px; } .tiles { grid-template-columns: repeat(2, minmax(0, 1fr)); }
          .tiles dd { font-size: 16px; } .charts, .plots { grid-template-columns: minmax(0, 1fr); }
          .far td:nth-child(2) { width: 50%; } .far td:first-child, .far th { white-space: normal; } }
        @page { margin: 14mm; }
        @media print {
          :root { --ink: #000; --soft: #444; --line: #bbb; --bar: #3b7dc4; --paper: #fff;
                  --ground: #fff; --mark: #c8553d; }
          body { font-size: 10px; print-color-adjust: exact; -webkit-print-color-adjust: exact; }
          main { max-width: none; padding: 0; } .card { overflow: visible; padding: 4px 6px; }
          h1 { font-size: 18px; } h2 { font-size: 14px; margin: 16px 0 6px; break-after: avoid; }
          th, caption, .tiles dt, .tiles small, .card p, footer { font-size: 9px; }
          th, td { padding: 2px 5px; } .tiles dd { font-size: 13px; }
          .tiles { grid-template-columns: repeat(4, 1fr); gap: 6px; }
          .charts { grid-template-columns: repeat(3, 1fr); gap: 8px; }
          .plots { grid-template-columns: repeat(2, 1fr); }
          .matrix { font-size: 7px; } .matrix td, .matrix th { padding: 1px 2px; font-size: 7px; }
          tr, .charts .card, .tiles .card { break-inside: avoid; } }
      </style>
    </head>
    <body>
      <main>
        <h1><xsl:apply-templates select="." mode="kind"/> of <b><xsl:value-of select="$target"/></b></h1>
        <xsl:apply-templates select="s:TrainingSummary"/>
        <xsl:for-each select="s:Message">
          <p class="message"><xsl:value-of select="."/></p>
        </xsl:for-each>
        <div class="tiles"><xsl:apply-templates select="." mode="tiles"/></div>
        <h2>Coefficients</h2>
        <div class="card"><xsl:apply-templates select="s:ParameterEstimates"/></div>
        <h2>How far from zero</h2>
        <div class="card"><xsl:apply-templates select="s:ParameterEstimates" mode="chart"/></div>
        <xsl:if test="s:ModelTestStats/*">
          <h2>Tests of the inputs</h2>
          <div class="card"><xsl:apply-templates select="s:ModelTestStats"/></div>
        </xsl:if>
        <xsl:apply-templates select="." mode="fit"/>
        <h2>Target and inputs</h2>
        <div class="charts"><xsl:apply-templates select="s:UnivariateData"/></div>
        <h2>Covariances of the estimates</h2>
        <div class="card"><xsl:apply-templates select="s:Matrix[@kind = 'symmetric']"/></div>
        <footer><xsl:value-of select="$program"/>, <xsl:value-of select="$date"/></footer>
      </main>
    </body>
  </html>
</xsl:template>

<xsl:template match="s:TrainingSummary">
  <xsl:variable name="counts" select="s:Counts"/>
  <p>
    <b><xsl:value-of select="@dataName"/></b><xsl:text> · </xsl:text>
    <xsl:value-of select="s:Statistic[@name='rowsRead']/@value"/> rows,
    <xsl:value-of select="s:Statistic[@name='rowsUsed']/@value"/> used
    <xsl:if test="$counts/@totalFreq != s:Statistic[@name='rowsUsed']/@value">
      <xsl:text> for </xsl:text><xsl:value-of select="$counts/@totalFreq"/> cases
    </xsl:if>
    <xsl:text> · </xsl:text><xsl:value-of select="$counts/@missingFreq"/> dropped for a missing cell
    <xsl:if test="$counts/@invalidFreq &gt; 0">
      <xsl:text> · </xsl:text><xsl:value-of select="$counts/@invalidFreq"/> for their weight
    </xsl:if>
    <xsl:apply-templates select=".." mode="about"/>
    <xsl:if test="s:Statistic[@name='freqWeight']"> · frequency weight
      <xsl:value-of select="s:Statistic[@name='freqWeight']/@value"/></xsl:if>
    <xsl:if test="s:Statistic[@name='regWeight']"> · regression weight
      <xsl:value-of select="s:Statistic[@name='regWeight']/@value"/></xsl:if>
  </p>
  <xsl:if test="s:FieldInfo">
    <p>Reference categories:
      <xsl:for-each select="s:FieldInfo">
        <xsl:if test="position() &gt; 1">, </xsl:if>
        <xsl:value-of select="concat(@fieldName, ' = ', @fieldValue)"/>
      </xsl:for-each>
    </p>
  </xsl:if>
</xsl:template>

<xsl:template name="tile">
  <xsl:param name="name"/>
  <xsl:param name="value"/>
  <xsl:param name="note"/>
  <xsl:param name="isSignificance" select="false()"/>
  <div class="card">
    <dl>
      <dt><xsl:value-of select="$name"/></dt>
      <dd>
        <xsl:call-template name="figure">
          <xsl:with-param name="x" select="$value"/>
          <xsl:with-param name="isSignificance" select="$isSignificance"/>
        </xsl:call-template>
        <small><xsl:value-of select="$note"/></small>
      </dd>
    </dl>
  </div>
</xsl:template>

<!-- ==== Tables ================================================================================ -->

<xsl:template name="cell">
  <xsl:param name="x"/>
  <td><xsl:call-template name="figure"><xsl:with-param name="x" select="$x"/></xsl:call-template></td>
</xsl:template>

<xsl:template name="significance">
  <xsl:param name="x"/>
  <td>
    <xsl:call-template name="figure">
      <xsl:with-param name="x" select="$x"/>
      <xsl:with-param name="isSignificance" select="true()"/>
    </xsl:call-template>
  </td>
</xsl:template>

<xsl:template match="s:ParameterStats[@isRedundant = 'true']">
  <tr class="redundant">
    <th scope="row"><xsl:value-of select="@paramName"/></th>
    <td colspan="7">redundant: a combination of the parameters before it</td>
  </tr>
</xsl:template>

<!-- The lower triangle of a symmetric matrix. -->
<xsl:template match="s:Matrix[@kind = 'symmetric']">
  <xsl:variable name="labels" select="s:MatrixLabels/s:RowColLabels/s:Label"/>
  <xsl:choose>
    <xsl:when test="@nbRows &gt; 30">
      <p>The matrix has <xsl:value-of select="@nbRows"/> rows; it is in the StatXML document.</p>
    </xsl:when>
    <xsl:otherwise>
      <table class="matrix">
        <caption>Lower triangle</caption>
        <thead>
          <tr>
            <td/>
            <xsl:for-each select="$labels">
              <th scope="col" title="{.}">
                <xsl:call-template name="short"><xsl:with-param name="text" select="."/></xsl:call-template>
              </th>
            </xsl:for-each>
          </tr>
        </thead>
        <tbody>
          <xsl:for-each select="s:Array">
            <xsl:variable name="row" select="position()"/>
            <tr>
              <th scope="row"><xsl:value-of select="$labels[$row]"/></th>
              <xsl:call-template name="cells"><xsl:with-param name="list" select="."/></xsl:call-template>
            </tr>
          </xsl:for-each>
        </tbody>
      </table>
    </xsl:otherwise>
  </xsl:choose>
</xsl:template>

<xsl:template name="cells">
  <xsl:param name="list"/>
  <xsl:if test="$list != ''">
    <td>
      <xsl:call-template name="figure">
        <xsl:with-param name="x" select="substring-before(concat($list, ' '), ' ')"/>
      </xsl:call-template>
    </td>
    <xsl:call-template name="cells">
      <xsl:with-param name="list" select="substring-after($list, ' ')"/>
    </xsl:call-template>
  </xsl:if>
</xsl:template>

<!-- ==== Charts ================================================================================ -->

<!-- Estimates and 95% bounds in standard errors: half the width of a bound is nearly the same for
     all, so that parameters of any unit share an axis. -->
<xsl:template match="s:ParameterEstimates" mode="chart">
  <xsl:variable name="shown" select="s:ParameterStats[@tTest | @zTest]"/>
  <xsl:variable name="reach">
    <xsl:for-each select="$shown">
      <xsl:sort select="(@tTest | @zTest) * (1 - 2 * ((@tTest | @zTest) &lt; 0))"
                data-type="number" order="descending"/>
      <xsl:if test="position() = 1">
        <xsl:value-of select="(@tTest | @zTest) * (1 - 2 * ((@tTest | @zTest) &lt; 0))
                              + (@confIntervalUpper - @estimate) div @stdError"/>
      </xsl:if>
    </xsl:for-each>
  </xsl:variable>
  <xsl:variable name="scale" select="49 div $reach"/>
  <xsl:if test="$shown">
    <table class="far">
      <caption>Estimate and 95% bounds, in standard errors of the estimate; marked where the bounds
        leave zero out</caption>
      <tbody>
        <xsl:for-each select="$shown">
          <xsl:variable name="t" select="@tTest | @zTest"/>
          <xsl:variable name="half" select="(@confIntervalUpper - @estimate) div @stdError"/>
          <tr>
            <xsl:if test="@confIntervalLower &gt; 0 or @confIntervalUpper &lt; 0">
              <xsl:attribute name="class">away</xsl:attribute>
            </xsl:if>
            <th scope="row"><xsl:value-of select="@paramName"/></th>
            <td>
              <svg viewBox="0 0 100 26" preserveAspectRatio="none" role="img"
                   aria-label="estimate and bounds of {@paramName}">
                <line class="axis" x1="50" x2="50" y1="0" y2="26"/>
                <xsl:if test="$half = $half">
                  <line class="interval" x1="{50 + ($t - $half) * $scale}"
                        x2="{50 + ($t + $half) * $scale}" y1="13" y2="13"/>
                </xsl:if>
                <line class="tick" x1="{50 + $t * $scale}" x2="{50 + $t * $scale}"
                      y1="9" y2="17"/>
              </svg>
            </td>
            <td><xsl:value-of select="translate(format-number($t * ($t &lt;= -0.005 or $t &gt;= 0.005) + 0, '0.00'), '-', '−')"/></td>
          </tr>
        </xsl:for-each>
      </tbody>
    </table>
  </xsl:if>
</xsl:template>

<xsl:template name="points">
  <xsl:param name="x"/>
  <xsl:param name="y"/>
  <xsl:param name="n"/>
  <xsl:param name="x0"/>
  <xsl:param name="y0"/>
  <xsl:param name="xs"/>
  <xsl:param name="ys"/>
  <xsl:param name="most"/>
  <xsl:param name="left" select="70"/>
  <xsl:param name="bottom" select="210"/>
  <xsl:if test="$x != ''">
    <xsl:variable name="at" select="substring-before(concat($x, ' '), ' ')"/>
    <xsl:variable name="height" select="substring-before(concat($y, ' '), ' ')"/>
    <xsl:variable name="count" select="substring-before(concat($n, ' '), ' ')"/>
    <circle class="point" cx="{$left + ($at - $x0) * $xs}" cy="{$bottom - ($height - $y0) * $ys}" r="3"
            fill-opacity="{0.2 + 0.7 * $count div $most}">
      <title><xsl:value-of select="concat($at, ', ', $height, ': ', $count)"/></title>
    </circle>
    <xsl:call-template name="points">
      <xsl:with-param name="x" select="substring-after($x, ' ')"/>
      <xsl:with-param name="y" select="substring-after($y, ' ')"/>
      <xsl:with-param name="n" select="substring-after($n, ' ')"/>
      <xsl:with-param name="x0" select="$x0"/>
      <xsl:with-param name="y0" select="$y0"/>
      <xsl:with-param name="xs" select="$xs"/>
      <xsl:with-param name="ys" select="$ys"/>
      <xsl:with-param name="most" select="$most"/>
      <xsl:with-param name="left" select="$left"/>
      <xsl:with-param name="bottom" select="$bottom"/>
    </xsl:call-template>
  </xsl:if>
</xsl:template>

<!-- A histogram: the bins are told by three of its statistics, a bar by the mean in its bin. -->
<xsl:template match="s:UnivariateData[s:Statistic[@name='bins']]">
  <xsl:variable name="min" select="s:Statistic[@name='minimum']/@value"/>
  <xsl:variable name="max" select="s:Statistic[@name='maximum']/@value"/>
  <xsl:variable name="bins" select="s:Statistic[@name='bins']/@value"/>
  <div class="card">
    <h3><xsl:value-of select="@description"/></h3>
    <svg viewBox="0 0 320 170" role="img" aria-label="histogram of {@description}">
      <xsl:variable name="most">
        <xsl:call-template name="largest">
          <xsl:with-param name="list" select="s:Coordinates[2]/s:Array"/>
        </xsl:call-template>
      </xsl:variable>
      <line class="axis" x1="0" x2="320" y1="12.5" y2="12.5"/>
      <line class="axis" x1="0" x2="320" y1="81.5" y2="81.5"/>
      <xsl:call-template name="histogram-bars">
        <xsl:with-param name="means" select="s:Coordinates[1]/s:Array"/>
        <xsl:with-param name="counts" select="s:Coordinates[2]/s:Array"/>
        <xsl:with-param name="min" select="$min"/>
        <xsl:with-param name="length" select="($max - $min) div $bins"/>
        <xsl:with-param name="bins" select="$bins"/>
        <xsl:with-param name="most" select="$most"/>
      </xsl:call-template>
      <text x="0" y="10"><xsl:call-template name="plain"><xsl:with-param name="x" select="$most"/></xsl:call-template> cases</text>
      <line class="axis" x1="0" x2="320" y1="150.5" y2="150.5"/>
      <line class="axis" x1="80" x2="80" y1="150" y2="155"/>
      <line class="axis" x1="160" x2="160" y1="150" y2="155"/>
      <line class="axis" x1="240" x2="240" y1="150" y2="155"/>
      <text x="0" y="167"><xsl:call-template name="plain"><xsl:with-param name="x" select="$min"/></xsl:call-template></text>
      <xsl:if test="$max &gt; $min">
        <text x="160" y="167" text-anchor="middle"><xsl:call-template name="plain"><xsl:with-param name="x" select="($min + $max) div 2"/></xsl:call-template></text>
        <text x="320" y="167" text-anchor="end"><xsl:call-template name="plain"><xsl:with-param name="x" select="$max"/></xsl:call-template></text>
      </xsl:if>
    </svg>
    <p>mean <xsl:call-template name="figure">
      <xsl:with-param name="x" select="s:Statistic[@name='mean']/@value"/></xsl:call-template>
      <xsl:text> · std. deviation </xsl:text><xsl:call-template name="figure">
      <xsl:with-param name="x" select="s:Statistic[@name='stdDeviation']/@value"/></xsl:call-template></p>
  </div>
</xsl:template>

<xsl:template name="histogram-bars">
  <xsl:param name="means"/>
  <xsl:param name="counts"/>
  <xsl:param name="min"/>
  <xsl:param name="length"/>
  <xsl:param name="bins"/>
  <xsl:param name="most"/>
  <xsl:if test="$means != ''">
    <xsl:variable name="mean" select="substring-before(concat($means, ' '), ' ')"/>
    <xsl:variable name="count" select="substring-before(concat($counts, ' '), ' ')"/>
    <xsl:variable name="found" select="floor(($mean - $min) div $length)"/>
    <xsl:variable name="bin">
      <xsl:choose>
        <xsl:when test="$bins = 1 or not($found &gt; 0)">0</xsl:when>
        <xsl:when test="$found &gt;= $bins"><xsl:value-of select="$bins - 1"/></xsl:when>
        <xsl:otherwise><xsl:value-of select="$found"/></xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:variable name="height" select="$count div $most * 138"/>
    <rect class="bar" x="{$bin * 320 div $bins + 1}" width="{320 div $bins - 2}"
          y="{150 - $height}" height="{$height}">
      <title><xsl:value-of select="concat($count, ' cases, mean ', $mean)"/></title>
    </rect>
    <xsl:call-template name="histogram-bars">
      <xsl:with-param name="means" select="substring-after($means, ' ')"/>
      <xsl:with-param name="counts" select="substring-after($counts, ' ')"/>
      <xsl:with-param name="min" select="$min"/>
      <xsl:with-param name="length" select="$length"/>
      <xsl:with-param name="bins" select="$bins"/>
      <xsl:with-param name="most" select="$most"/>
    </xsl:call-template>
  </xsl:if>
</xsl:template>

<!-- A bar chart, of the first 25 categories. -->
<xsl:template match="s:UnivariateData">
  <xsl:variable name="n" select="s:Coordinates[1]/s:Array/@n"/>
  <xsl:variable name="shown" select="25 * ($n &gt; 25) + $n * ($n &lt;= 25)"/>
  <div class="card">
    <h3><xsl:value-of select="@description"/></h3>
    <svg viewBox="0 0 320 {$shown * 22 + 4}" role="img" aria-label="bar chart of {@description}">
      <xsl:call-template name="bars">
        <xsl:with-param name="labels" select="s:Coordinates[1]/s:Array"/>
        <xsl:with-param name="counts" select="s:Coordinates[2]/s:Array"/>
        <xsl:with-param name="left" select="$shown"/>
        <xsl:with-param name="most">
          <xsl:call-template name="largest">
            <xsl:with-param name="list" select="s:Coordinates[2]/s:Array"/>
          </xsl:call-template>
        </xsl:with-param>
      </xsl:call-template>
    </svg>
    <p>categories: <xsl:value-of select="$n"/><xsl:if test="$n &gt; $shown">, the first <xsl:value-of select="$shown"/> shown</xsl:if></p>
  </div>
</xsl:template>

<xsl:template name="bars">
  <xsl:param name="labels"/>
  <xsl:param name="counts"/>
  <xsl:param name="left"/>
  <xsl:param name="most"/>
  <xsl:param name="y" select="0"/>
  <xsl:if test="$left &gt; 0">
    <xsl:variable name="quoted" select="starts-with($labels, '&quot;')"/>
    <xsl:variable name="length">
      <xsl:choose>
        <xsl:when test="$quoted">
          <xsl:call-template name="quoted-length">
            <xsl:with-param name="rest" select="substring($labels, 2)"/>
          </xsl:call-template>
        </xsl:when>
        <xsl:otherwise>
          <xsl:value-of select="string-length(substring-before(concat($labels, ' '), ' '))"/>
        </xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:variable name="label">
      <xsl:call-template name="unescaped">
        <xsl:with-param name="text" select="substring($labels, 1 + $quoted, $length)"/>
      </xsl:call-template>
    </xsl:variable>
    <xsl:variable name="count" select="substring-before(concat($counts, ' '), ' ')"/>
    <text class="name" x="112" y="{$y + 15}" text-anchor="end">
      <xsl:call-template name="short"><xsl:with-param name="text" select="$label"/></xsl:call-template>
    </text>
    <rect class="bar" x="118" y="{$y + 3}" height="16" width="{$count div $most * 145}">
      <title><xsl:value-of select="concat($label, ': ', $count)"/></title>
    </rect>
    <text x="{$count div $most * 145 + 122}" y="{$y + 15}"><xsl:call-template name="plain"><xsl:with-param name="x" select="$count"/></xsl:call-template></text>
    <xsl:call-template name="bars">
      <xsl:with-param name="labels" select="substring($labels, $length + 2 * (1 + $quoted))"/>
      <xsl:with-param name="counts" select="substring-after($counts, ' ')"/>
      <xsl:with-param name="left" select="$left - 1"/>
      <xsl:with-param name="most" select="$most"/>
      <xsl:with-param name="y" select="$y + 22"/>
    </xsl:call-template>
  </xsl:if>
</xsl:template>

<!-- ==== Lists ================================================================================= -->

<!-- The characters before the quote that ends a quoted item, escaped ones with their backslashes. -->
<xsl:template name="quoted-length">
  <xsl:param name="rest"/>
  <xsl:param name="length" select="0"/>
  <xsl:variable name="item" select="substring-before($rest, '&quot;')"/>
  <xsl:choose>
    <xsl:when test="contains($item, '\')">
      <xsl:variable name="pair" select="string-length(substring-before($item, '\')) + 2"/>
      <xsl:call-template name="quoted-length">
        <xsl:with-param name="rest" select="substring($rest, $pair + 1)"/>
        <xsl:with-param name="length" select="$length + $pair"/>
      </xsl:call-template>
    </xsl:when>
    <xsl:otherwise><xsl:value-of select="$length + string-length($item)"/></xsl:otherwise>
  </xsl:choose>
</xsl:template>

<!-- Without the backslashes that stand before quotes and backslashes. -->
<xsl:template name="unescaped">
  <xsl:param name="text"/>
  <xsl:choose>
    <xsl:when test="contains($text, '\')">
      <xsl:variable name="rest" select="substring-after($text, '\')"/>
      <xsl:value-of select="concat(substring-before($text, '\'), substring($rest, 1, 1))"/>
      <xsl:call-template name="unescaped">
        <xsl:with-param name="text" select="substring($rest, 2)"/>
      </xsl:call-template>
    </xsl:when>
    <xsl:otherwise><xsl:value-of select="$text"/></xsl:otherwise>
  </xsl:choose>
</xsl:template>

<xsl:template name="largest">
  <xsl:param name="list"/>
  <xsl:param name="most" select="0"/>
  <xsl:variable name="x" select="substring-before(concat($list, ' '), ' ')"/>
  <xsl:choose>
    <xsl:when test="$list = ''"><xsl:value-of select="$most"/></xsl:when>
    <xsl:otherwise>
      <xsl:call-template name="largest">
        <xsl:with-param name="list" select="substring-after($list, ' ')"/>
        <xsl:with-param name="most" select="$x * ($x &gt; $most) + $most * not($x &gt; $most)"/>
      </xsl:call-template>
    </xsl:otherwise>
  </xsl:choose>
</xsl:template>

<xsl:template name="short">
  <xsl:param name="text"/>
  <xsl:param name="most" select="15"/>
  <xsl:value-of select="substring($text, 1, $most)"/>
  <xsl:if test="string-length($text) &gt; $most">…</xsl:if>
</xsl:template>

<!-- ==== Numbers =============================================================================== -->

<!-- Six significant digits; a dash where there is no figure. -->
<xsl:template name="figure">
  <xsl:param name="x"/>
  <xsl:param name="isSignificance" select="false()"/>
  <xsl:variable name="n" select="number($x)"/>
  <xsl:variable name="size" select="$n * (1 - 2 * ($n &lt; 0))"/>
  <xsl:choose>
    <xsl:when test="not($n = $n)">–</xsl:when>
    <xsl:when test="$isSignificance and $n = 0">&lt; 1e-307</xsl:when>
    <xsl:when test="$n = 0">0</xsl:when>
    <xsl:otherwise>
      <xsl:variable name="exponent">
        <xsl:call-template name="exponent"><xsl:with-param name="size" select="$size"/></xsl:call-template>
      </xsl:variable>
      <xsl:choose>
        <xsl:when test="$exponent &gt;= 6 and $exponent &lt; 12"><xsl:value-of select="translate(format-number($n, '0'), '-', '−')"/></xsl:when>
        <xsl:when test="$exponent &gt;= -5 and $exponent &lt; 6">
          <xsl:variable name="digits" select="substring('0.##########', 1, 7 - $exponent - ($exponent = 5))"/>
          <xsl:value-of select="translate(format-number($n, translate($digits, '#', '0')), '-', '−')"/>
        </xsl:when>
        <xsl:otherwise>
          <xsl:variable name="mantissa">
            <xsl:call-template name="mantissa">
              <xsl:with-param name="n" select="$n"/>
              <xsl:with-param name="exponent" select="$exponent"/>
            </xsl:call-template>
          </xsl:variable>
          <xsl:value-of select="translate(format-number($mantissa, '0.00000'), '-', '−')"/>
          <xsl:text>·10</xsl:text><sup><xsl:value-of select="translate($exponent, '-', '−')"/></sup>
        </xsl:otherwise>
      </xsl:choose>
    </xsl:otherwise>
  </xsl:choose>
</xsl:template>

<!-- The same as text alone, for charts. -->
<xsl:template name="plain">
  <xsl:param name="x"/>
  <xsl:variable name="size" select="$x * (1 - 2 * ($x &lt; 0))"/>
  <xsl:choose>
    <xsl:when test="$size &gt;= 1000000000 or ($size &gt; 0 and $size &lt; 0.001)"><xsl:value-of select="$x"/></xsl:when>
    <xsl:when test="$size &gt;= 1000"><xsl:value-of select="translate(format-number($x, '0.#'), '-', '−')"/></xsl:when>
    <xsl:otherwise><xsl:value-of select="translate(format-number($x, '0.####'), '-', '−')"/></xsl:otherwise>
  </xsl:choose>
</xsl:template>

<xsl:template name="exponent">
  <xsl:param name="size"/>
  <xsl:param name="exponent" select="0"/>
  <xsl:choose>
    <xsl:when test="$size &gt;= 10 and $exponent &lt; 400">
      <xsl:call-template name="exponent">
        <xsl:with-param name="size" select="$size div 10"/>
        <xsl:with-param name="exponent" select="$exponent + 1"/>
      </xsl:call-template>
    </xsl:when>
    <xsl:when test="$size &lt; 1 and $exponent &gt; -400">
      <xsl:call-template name="exponent">
        <xsl:with-param name="size" select="$size * 10"/>
        <xsl:with-param name="exponent" select="$exponent - 1"/>
      </xsl:call-template>
    </xsl:when>
    <xsl:otherwise><xsl:value-of select="$exponent"/></xsl:otherwise>
  </xsl:choose>
</xsl:template>

<xsl:template name="mantissa">
  <xsl:param name="n"/>
  <xsl:param name="exponent"/>
  <xsl:choose>
    <xsl:when test="$exponent &gt; 0">
      <xsl:call-template name="mantissa">
        <xsl:with-param name="n" select="$n div 10"/>
        <xsl:with-param name="exponent" select="$exponent - 1"/>
      </xsl:call-template>
    </xsl:when>
    <xsl:when test="$exponent &lt; 0">
      <xsl:call-template name="mantissa">
        <xsl:with-param name="n" select="$n * 10"/>
        <xsl:with-param name="exponent" select="$exponent + 1"/>
      </xsl:call-template>
    </xsl:when>
    <xsl:otherwise><xsl:value-of select="$n"/></xsl:otherwise>
  </xsl:choose>
</xsl:template>
</xsl:stylesheet>
