<!DOCTYPE html>
<html><head><meta charset="utf-8"><title>{htmlspecialchars title}</title></head>
<body>
<h1>Hello {htmlspecialchars name}!</h1>
<p>You have <a href="{url}">{orders} open orders</a>. We write to you as soon as a parcel leaves our house.</p>
<p class="greeting">Yours sincerely, {htmlspecialchars shop}</p>
</body></html>
